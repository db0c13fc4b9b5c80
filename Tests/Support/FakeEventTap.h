#pragma once

#include "Platform/EventTap.h"

#include <QString>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

/// An event tap whose events come from the test. Calls of the tap are recorded in order.
class FakeEventTap final : public EventTap {
public:
    explicit FakeEventTap(std::function<void(const TapEvent &)> handler)
        : m_handler(std::move(handler)) { }

    void run() override;
    void setEnabled(bool enabled) override;
    void invalidate() override;

    /// Delivers `event` on the thread that runs the tap, as long as the tap is enabled, and waits until that
    /// is done. The tap must be run by another thread, now or soon.
    void send(const TapEvent &event);
    /// Like send(), without waiting.
    void post(const TapEvent &event);

    /// "enable", "disable", "run", "invalidate" and "end" (of run), as they came.
    std::vector<QString> calls() const;
    /// The name of the thread that runs the tap; empty before.
    QString threadName() const;

private:
    std::function<void(const TapEvent &)> m_handler;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<TapEvent> m_events;
    size_t m_deliveredCount = 0;
    size_t m_sentCount = 0;
    bool m_isEnabled = false;
    bool m_isInvalid = false;
    std::vector<QString> m_calls;
    QString m_threadName;
};

/// Makes event taps that the test drives; every one made is kept, the latest at the end.
class FakeEventTapFactory final : public EventTapFactory {
public:
    std::shared_ptr<EventTap> create(std::function<void(const TapEvent &)> handler) override;

    /// Whether the system refuses.
    bool refuses = false;
    std::vector<std::shared_ptr<FakeEventTap>> taps;
};
