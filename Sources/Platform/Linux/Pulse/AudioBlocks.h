#pragma once

#include "Platform/AudioBuffer.h"

#include <functional>

/// Cuts a stream of frames, which comes in pieces of any length, into buffers of one length. Not thread-safe.
class AudioBlocks {
public:
    using Sink = std::function<void(const AudioBuffer &)>;

    /// Buffers go nowhere until there is a sink.
    explicit AudioBlocks(const AudioFormat &format);

    /// Forgets what is not delivered yet; `sink` gets every further buffer of `frameCount` frames within the
    /// call that completes it. The buffer is used again for the next one.
    void deliverTo(int frameCount, Sink sink);

    /// Forgets what is not delivered yet.
    void clear();

    /// Adds frames with interleaved channels; null means silence.
    void append(const float *samples, qint64 frameCount);

private:
    void appendToBuffer(const float *samples, qint64 frameCount);

    AudioBuffer m_buffer;
    qint64 m_filled = 0;
    Sink m_sink;
};
