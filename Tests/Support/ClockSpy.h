#pragma once

#include "Support/VirtualClock.h"

/// A virtual clock that tells that somebody looked at it: who waits for data from outside looks at the clock
/// when some has come.
class ClockSpy final : public Clock {
public:
    Date now() const override {
        ++m_lookCount;
        return m_clock.now();
    }
    void post(std::function<void()> work) override { m_clock.post(std::move(work)); }
    void callAfter(double seconds, std::function<void()> work) override {
        m_clock.callAfter(seconds, std::move(work));
    }
    void block(double seconds) override { m_clock.block(seconds); }

    void advance(double seconds) { m_clock.advance(seconds); }

    /// How often the time was asked for.
    int lookCount() const { return m_lookCount; }

private:
    VirtualClock m_clock;
    mutable int m_lookCount = 0;
};
