#pragma once

#include "Foundation/Date.h"
#include "Foundation/Task.h"

#include <functional>

/// Time and the main thread's queue. All waiting and all reading of the time goes through this.
///
/// Destruction discards pending work and abandons sleeping tasks.
class Clock {
public:
    virtual ~Clock() = default;

    /// The current time.
    virtual Date now() const = 0;

    /// Runs `work` on the main thread in a later iteration of its event loop, in call order. Any thread.
    virtual void post(std::function<void()> work) = 0;

    /// Runs `work` on the main thread once `seconds` have passed; zero or less counts as zero. Main thread
    /// only.
    virtual void callAfter(double seconds, std::function<void()> work) = 0;

    /// Blocks the calling thread.
    virtual void block(double seconds) = 0;
};

/// What `sleep` returns; awaiting it suspends a task of the main thread.
struct SleepRequest {
    Clock &clock;
    double seconds;

    class Awaiter : public AbandonableAwaiter {
    public:
        Awaiter(Clock &clock, double seconds)
            : m_clock(clock)
            , m_seconds(seconds) { }
        void await_suspend(std::coroutine_handle<> waiting) {
            m_clock.callAfter(m_seconds, resumption(waiting));
        }

    private:
        Clock &m_clock;
        double m_seconds;
    };
    Awaiter operator co_await() const { return { clock, seconds }; }
};

/// Suspends the awaiting task for `seconds` of `clock`. The task is abandoned if the clock is destroyed.
inline SleepRequest sleep(Clock &clock, double seconds) {
    return { clock, seconds };
}
