#pragma once

#include "Platform/AudioBuffer.h"

#include <functional>

/// The microphone side of the sound system.
class AudioEngine {
public:
    /// Receives one buffer on the audio thread. The buffer is the engine's and must not be kept.
    using Tap = std::function<void(const AudioBuffer &)>;

    virtual ~AudioEngine() = default;

    /// The format of every buffer that a tap gets; fixed, known without a device.
    virtual AudioFormat inputFormat() const = 0;

    /// Delivers input in buffers of `bufferSize` frames to `tap` from the next start on.
    virtual void installTap(int bufferSize, Tap tap) = 0;

    /// After it has returned the tap is not called again.
    virtual void removeTap() = 0;

    /// Whether input is being delivered; false again once the source has gone.
    virtual bool isRunning() const = 0;

    /// Opens the default source and waits until it delivers, a bounded time. Throws SystemError.
    virtual void start() = 0;

    /// Closes the source. Harmless when stopped.
    virtual void stop() = 0;
};
