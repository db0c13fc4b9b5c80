#include "Support/FakeAudioEngine.h"

void FakeAudioEngine::installTap(int bufferSize, Tap tap) {
    const std::lock_guard lock(m_mutex);
    calls.push_back(QStringLiteral("installTap"));
    tapBufferSize = bufferSize;
    m_tap = std::move(tap);
}

void FakeAudioEngine::removeTap() {
    const std::lock_guard lock(m_mutex);
    calls.push_back(QStringLiteral("removeTap"));
    m_tap = nullptr;
}

bool FakeAudioEngine::isRunning() const {
    const std::lock_guard lock(m_mutex);
    return m_isRunning;
}

void FakeAudioEngine::start() {
    if (onStart)
        onStart();
    const std::lock_guard lock(m_mutex);
    calls.push_back(QStringLiteral("start"));
    if (startFailures.empty()) {
        m_isRunning = true;
        return;
    }
    const SystemError failure = startFailures.front();
    startFailures.pop_front();
    throw failure;
}

void FakeAudioEngine::stop() {
    const std::lock_guard lock(m_mutex);
    calls.push_back(QStringLiteral("stop"));
    m_isRunning = false;
}

void FakeAudioEngine::feed(const AudioBuffer &buffer) {
    // Held during the call, so that removeTap() waits for it.
    const std::lock_guard lock(m_mutex);
    if (m_isRunning && m_tap)
        m_tap(buffer);
}

AudioBuffer FakeAudioEngine::buffer(std::vector<float> samples) const {
    const auto frameLength = qint64(samples.size());
    return { format, { std::move(samples) }, frameLength };
}

void FakeAudioEngine::loseSource() {
    const std::lock_guard lock(m_mutex);
    m_isRunning = false;
}
