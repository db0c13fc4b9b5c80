#pragma once

#include "Platform/AudioBuffer.h"

#include <functional>

/// Splits a stream of frames into buffers of equal length. Not thread-safe.
class AudioBlocks {
public:
    using Sink = std::function<void(const AudioBuffer &)>;

    /// Buffers are discarded until a sink is set.
    explicit AudioBlocks(const AudioFormat &format);

    /// Discards pending frames; `sink` then gets every buffer of `frameCount` frames, within the call that
    /// completes it. The buffer is reused.
    void deliverTo(int frameCount, Sink sink);

    /// Discards pending frames.
    void clear();

    /// Appends interleaved frames; null means silence.
    void append(const float *samples, qint64 frameCount);

private:
    void appendToBuffer(const float *samples, qint64 frameCount);

    AudioBuffer m_buffer;
    qint64 m_filled = 0;
    Sink m_sink;
};
