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

/// Capture that loses no first syllable: the engine runs all the time, the latest sound is kept in memory,
/// and a recording begins with it.
///
/// Main thread only, destruction included. Engine and processing each have a queue of their own; they are
/// entered one after the other, never one from within the other.
class LiveAudioCapture final : public LiveCapture {
public:
    /// How the capture reaches the system; everything named here outlives it.
    struct Platform {
        /// Used by this capture alone.
        AudioEngine &engine;
        AudioFileStore &audioFiles;
        MicrophonePermission &permission;
        FileManager &fileManager;
        Clock &clock;
    };

    /// Installs the tap at once and leaves the engine stopped. `preRollSeconds` is how much sound from before
    /// the start a recording begins with, short by up to one buffer of the engine. A number of frames that
    /// cannot be counted ends the program.
    explicit LiveAudioCapture(Platform platform, double preRollSeconds = 0.4);

    /// Waits for an engine start that is under way, then removes the tap and stops the engine.
    ~LiveAudioCapture() override;

    /// A failure of the start is ignored: the next recording tries again.
    void warmupIfAuthorized() override;

    /// Does not suspend while the engine runs. One start of the engine serves everybody who asks for it
    /// meanwhile, so that nobody waits for two.
    Task<> prepareToRecord() override;

    /// Starts the engine if it does not run, which blocks, creates the file with its folder, and writes the
    /// sound from before the call, then what comes. A recording under way ends. Blocks until the earlier
    /// sound is written. While it records, an engine that has lost its source is started again and again, and
    /// the time without sound is silence in the file.
    void startRecording(const FileURL &url) override;

    /// Closes the file; the engine keeps running. Harmless when nothing is recorded.
    void stopRecording() override;

    double currentLevel() override;
    double currentPreRollPeak() override;

private:
    struct Recording;
    struct EngineStart;
    struct Watch;

    std::shared_ptr<const EngineStart> startEngine();
    static Task<> keepWatch(LiveAudioCapture *capture, std::weak_ptr<Watch> weakWatch);
    void look(Watch &watch);

    /// Runs on the audio thread, which must never wait for a file or for the processing: it copies the buffer
    /// and hands the copy on, nothing else.
    void enqueue(const AudioBuffer &buffer);

    Platform m_platform;
    /// Shared only so that work which still waits on a queue can tell that the capture has gone.
    std::shared_ptr<Recording> m_recording;
    /// The latest.
    std::shared_ptr<EngineStart> m_engineStart;
    /// Present while a recording runs.
    std::shared_ptr<Watch> m_watch;
    /// When the latest sound came, in seconds since the reference date.
    std::atomic<double> m_lastSound = 0;
    SerialQueue m_engineQueue;
    SerialQueue m_processingQueue;
};
