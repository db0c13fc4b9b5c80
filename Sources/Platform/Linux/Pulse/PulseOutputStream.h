#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/Desktop/SndFileReader.h"
#include "Platform/Linux/Pulse/PulseConnection.h"

#include <functional>
#include <future>
#include <memory>

/// Plays one sound through the default output.
///
/// Its operations return at once, whatever the server does: a queue carries them out, one after the other,
/// and reads the file. Main thread only.
class PulseOutputStream {
public:
    /// What it plays over; both must outlive the stream.
    struct Platform {
        PulseConnection &connection;
        SerialQueue &queue;
    };
    /// Is told that the sound came to its end, or with false that it broke off. Runs on the queue.
    using DidEnd = std::function<void(bool successfully)>;

    /// Silent, at the start of `sound`.
    PulseOutputStream(Platform platform, std::unique_ptr<SndFileReader> sound);
    /// Silences it, after which the observer is not called again.
    ~PulseOutputStream();

    /// Replaces an earlier observer.
    void setDidEnd(DidEnd observer);
    /// Whether the sound starts again at its end, without a gap.
    void setLoops(bool loops);
    /// 0 to 1, linear. Heard from the first frame on, or within a third of a second.
    void setVolume(float volume);

    /// Plays from where it is. The answer, whether the server plays it, may be long in coming.
    std::shared_future<bool> play();
    /// Keeps the place.
    void pause();
    /// Falls silent and goes back to the start.
    void stop();

    /// From a start on until the end, a pause, a stop or a failure.
    bool isPlaying() const;

private:
    class Playback;

    void doOnQueue(void (Playback::*operation)());

    SerialQueue &m_queue;
    /// Shared with the work that waits on the queue.
    const std::shared_ptr<Playback> m_playback;
};
