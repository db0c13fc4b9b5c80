#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/Desktop/SndFileReader.h"
#include "Platform/Linux/Pulse/PulseConnection.h"

#include <functional>
#include <future>
#include <memory>

/// Plays one sound through the default output.
///
/// Operations never wait for the server: a queue carries them out in order and reads the file. Main thread
/// only.
class PulseOutputStream {
public:
    /// What the stream uses; both must outlive it.
    struct Platform {
        PulseConnection &connection;
        SerialQueue &queue;
    };
    /// Called when the sound has reached its end, or with false when playback failed. Runs on the queue.
    using DidEnd = std::function<void(bool successfully)>;

    /// Stopped, at the start of `sound`.
    PulseOutputStream(Platform platform, std::unique_ptr<SndFileReader> sound);
    /// Stops the sound; the observer is not called again.
    ~PulseOutputStream();

    /// Replaces an earlier observer.
    void setDidEnd(DidEnd observer);
    /// Whether the sound loops without a gap.
    void setLoops(bool loops);
    /// 0 to 1, linear. While playing, takes effect within a third of a second.
    void setVolume(float volume);

    /// Plays from the current position. The future, whether the server plays it, may take long to become
    /// ready.
    std::shared_future<bool> play();
    /// Keeps the position.
    void pause();
    /// Stops and returns to the start.
    void stop();

    /// From play() until the end, a pause, a stop or a failure.
    bool isPlaying() const;

private:
    class Playback;

    void doOnQueue(void (Playback::*operation)());

    SerialQueue &m_queue;
    /// Shared with the queued work.
    const std::shared_ptr<Playback> m_playback;
};
