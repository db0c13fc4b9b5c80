#include "Platform/Linux/Pulse/PulseAudioEngine.h"

PulseAudioEngine::PulseAudioEngine(PulseConnection &connection)
    : m_stream(connection, AudioFormat { 48000, 1 }) { }

void PulseAudioEngine::installTap(int bufferSize, Tap tap) {
    m_stream.deliverTo(bufferSize, std::move(tap));
}

void PulseAudioEngine::removeTap() {
    m_stream.deliverTo(0, nullptr);
}
