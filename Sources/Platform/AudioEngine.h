#pragma once

#include "Platform/AudioBuffer.h"

#include <functional>

/// The microphone side of the sound system.
class AudioEngine {
public:
    /// Receives one buffer on the audio thread. The buffer is valid only during the call.
    using Tap = std::function<void(const AudioBuffer &)>;

    virtual ~AudioEngine() = default;

    /// The format of every buffer; fixed, known without a device.
    virtual AudioFormat inputFormat() const = 0;

    /// Delivers input to `tap` in buffers of `bufferSize` frames, beginning with the next start.
    virtual void installTap(int bufferSize, Tap tap) = 0;

    /// The tap is not called again once this has returned.
    virtual void removeTap() = 0;

    /// Whether input is being delivered; false again once the source is lost.
    virtual bool isRunning() const = 0;

    /// Opens the default source and waits, for a limited time, until it delivers. Throws SystemError.
    virtual void start() = 0;

    /// Closes the source. Does nothing when stopped.
    virtual void stop() = 0;
};
