#pragma once

#include "Foundation/Clock.h"

#include <deque>
#include <map>
#include <mutex>
#include <vector>

/// A clock that stands still until a test moves it.
class VirtualClock final : public Clock {
public:
    /// 2026-01-01T00:00:00Z.
    static constexpr Date start = Date::fromSecondsSince1970(1767225600);

    VirtualClock() = default;
    ~VirtualClock() override { forgetPending(); }

    Date now() const override { return m_now; }
    void post(std::function<void()> work) override;
    void callAfter(double seconds, std::function<void()> work) override;

    /// Moves the time without running anything, as a blocked main thread does, and records the wait.
    void block(double seconds) override;

    /// Runs what was posted, and what that posts, until nothing is left.
    void runPosted();

    /// Moves the time forward by `seconds`, running what becomes due in order, and posted work in between.
    void advance(double seconds);

    /// Moves the time without running anything.
    void shift(double seconds) { m_now = m_now + seconds; }

    /// Moves the wall clock alone, as a sleep of the machine or a user who sets it does: what is to come
    /// stays as far away as it was.
    void jump(double seconds);

    /// Drops everything that is still to come, as the end of the clock does.
    void forgetPending();

    /// How many calls are still to come.
    size_t pendingCallCount() const { return m_calls.size(); }

    /// Every wait of block(), in order.
    std::vector<double> blockedSeconds;

private:
    std::function<void()> takePosted();

    Date m_now = start;
    std::mutex m_postedMutex;
    std::deque<std::function<void()>> m_posted;
    std::multimap<double, std::function<void()>> m_calls;
};
