#include "Support/FakeEventTap.h"

#include <QThread>

void FakeEventTap::run() {
    std::unique_lock lock(m_mutex);
    m_calls.push_back(QStringLiteral("run"));
    m_threadName = QThread::currentThread()->objectName();
    for (;;) {
        m_changed.wait(lock, [this] { return m_isInvalid || !m_events.empty(); });
        if (m_isInvalid)
            break;
        const TapEvent event = m_events.front();
        m_events.pop_front();
        const bool isOfKeys
            = event.type == TapEventType::FlagsChanged || event.type == TapEventType::ChordBegan;
        const bool isDelivered = m_isEnabled || !isOfKeys;
        lock.unlock();
        if (isDelivered)
            m_handler(event);
        lock.lock();
        ++m_deliveredCount;
        m_changed.notify_all();
    }
    m_calls.push_back(QStringLiteral("end"));
}

void FakeEventTap::setEnabled(bool enabled) {
    std::lock_guard lock(m_mutex);
    m_isEnabled = enabled;
    m_calls.push_back(enabled ? QStringLiteral("enable") : QStringLiteral("disable"));
}

void FakeEventTap::invalidate() {
    std::lock_guard lock(m_mutex);
    m_isInvalid = true;
    m_calls.push_back(QStringLiteral("invalidate"));
    m_changed.notify_all();
}

void FakeEventTap::send(const TapEvent &event) {
    std::unique_lock lock(m_mutex);
    m_events.push_back(event);
    const size_t number = ++m_sentCount;
    m_changed.notify_all();
    m_changed.wait(lock, [this, number] { return m_deliveredCount >= number; });
}

void FakeEventTap::post(const TapEvent &event) {
    std::lock_guard lock(m_mutex);
    m_events.push_back(event);
    ++m_sentCount;
    m_changed.notify_all();
}

std::vector<QString> FakeEventTap::calls() const {
    std::lock_guard lock(m_mutex);
    return m_calls;
}

QString FakeEventTap::threadName() const {
    std::lock_guard lock(m_mutex);
    return m_threadName;
}

std::shared_ptr<EventTap> FakeEventTapFactory::create(std::function<void(const TapEvent &)> handler) {
    if (refuses)
        return {};
    taps.push_back(std::make_shared<FakeEventTap>(std::move(handler)));
    return taps.back();
}
