#pragma once

#include "Platform/Date.h"

#include <coroutine>
#include <functional>

/// Time and the main thread's queue. Everything that waits or asks for the time does so through this.
class Clock {
public:
    virtual ~Clock() = default;

    /// The present instant.
    virtual Date now() const = 0;

    /// Runs `work` on the main thread in a later turn of its loop, in the order of the calls. Any thread may
    /// call it.
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

    struct Awaiter {
        Clock &clock;
        double seconds;
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) {
            clock.callAfter(seconds, [waiting] { waiting.resume(); });
        }
        void await_resume() const noexcept { }
    };
    Awaiter operator co_await() const { return { clock, seconds }; }
};

/// Suspends the awaiting task for `seconds` of `clock`; the clock must outlive the wait.
inline SleepRequest sleep(Clock &clock, double seconds) {
    return { clock, seconds };
}
