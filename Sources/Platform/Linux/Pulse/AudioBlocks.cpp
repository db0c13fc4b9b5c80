#include "Platform/Linux/Pulse/AudioBlocks.h"

#include <algorithm>

AudioBlocks::AudioBlocks(const AudioFormat &format)
    : m_buffer { format, std::vector<std::vector<float>>(size_t(format.channelCount)), 0 } { }

void AudioBlocks::deliverTo(int frameCount, Sink sink) {
    clear();
    m_sink = std::move(sink);
    m_buffer.frameLength = frameCount;
    for (auto &channel : m_buffer.channels)
        channel.assign(size_t(frameCount), 0.0F);
}

void AudioBlocks::clear() {
    m_filled = 0;
}

void AudioBlocks::append(const float *samples, qint64 frameCount) {
    if (!m_sink)
        return;
    while (frameCount > 0) {
        const qint64 taken = std::min(frameCount, m_buffer.frameLength - m_filled);
        appendToBuffer(samples, taken);
        if (samples)
            samples += taken * m_buffer.format.channelCount;
        frameCount -= taken;
        if (m_filled < m_buffer.frameLength)
            continue;
        m_filled = 0;
        m_sink(m_buffer);
    }
}

void AudioBlocks::appendToBuffer(const float *samples, qint64 frameCount) {
    const int channelCount = m_buffer.format.channelCount;
    for (int channel = 0; channel < channelCount; ++channel) {
        float *target = m_buffer.channels[size_t(channel)].data() + m_filled;
        for (qint64 frame = 0; frame < frameCount; ++frame)
            target[frame] = samples ? samples[frame * channelCount + channel] : 0.0F;
    }
    m_filled += frameCount;
}
