#pragma once

#include "Foundation/Clock.h"
#include "Foundation/SerialQueue.h"
#include "Platform/AudioEngine.h"
#include "Platform/AudioFileStore.h"
#include "Platform/FileManager.h"
#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <atomic>
#include <memory>

/// Capture with pre-roll: the engine always runs, the latest sound is kept in memory, and a recording begins
/// with it, so that the first syllable is not lost.
///
/// Main thread only, destruction included. Engine and processing each have their own queue; neither waits for
/// the other.
class LiveAudioCapture final : public LiveCapture {
public:
    /// The platform services in use; all must outlive the capture.
    struct Platform {
        /// Used only by this capture.
        AudioEngine &engine;
        AudioFileStore &audioFiles;
        MicrophonePermission &permission;
        FileManager &fileManager;
        Clock &clock;
    };

    /// Installs the tap and leaves the engine stopped. A recording begins with the last `preRollSeconds` of
    /// sound, less up to one buffer. A number of frames out of range aborts the program.
    explicit LiveAudioCapture(Platform platform, double preRollSeconds = 0.4);

    /// Waits for a pending engine start, then removes the tap and stops the engine.
    ~LiveAudioCapture() override;

    /// A failure of the start is ignored: the next recording tries again.
    void warmupIfAuthorized() override;

    /// Does not suspend if the engine runs. Concurrent callers share one start of the engine.
    Task<> prepareToRecord() override;

    /// Ends a running recording, starts the engine if necessary (which blocks), creates the file and its
    /// folder, and writes the pre-roll, then the live sound. Blocks until the pre-roll is written. While
    /// recording, an engine that has lost its source is restarted repeatedly, and gaps become silence in the
    /// file.
    void startRecording(const FileURL &url) override;

    /// Closes the file; the engine keeps running. Does nothing when not recording.
    void stopRecording() override;

    double currentLevel() override;
    double currentPreRollPeak() override;

private:
    struct Recording;
    struct EngineStart;
    struct Watch;

    std::shared_ptr<const EngineStart> startEngine();
    static Task<> keepWatch(LiveAudioCapture *capture, std::weak_ptr<Watch> weakWatch);
    void checkForSound(Watch &watch);

    /// Runs on the audio thread, which must never wait for a file or for the processing, so it only queues a
    /// copy of the buffer.
    void enqueue(const AudioBuffer &buffer);

    Platform m_platform;
    /// Shared only so that queued work can detect that the capture has been destroyed.
    std::shared_ptr<Recording> m_recording;
    /// The latest start.
    std::shared_ptr<EngineStart> m_engineStart;
    /// Present while a recording runs.
    std::shared_ptr<Watch> m_watch;
    /// Time of the latest sound in seconds since the reference date.
    std::atomic<double> m_lastSound = 0;
    SerialQueue m_engineQueue;
    SerialQueue m_processingQueue;
};
