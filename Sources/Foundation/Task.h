#pragma once

#include <QCoroTask>

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>

/// A long operation that may suspend. It starts at once and runs up to its first suspension.
template <typename T = void>
using Task = QCoro::Task<T>;

/// Lets `task` run to completion detached. An exception that escapes it is a bug: it is logged and passed to
/// the handler set by setUnhandledTaskErrorHandler().
void launch(Task<> task);

/// Sets what launch() does with an exception besides logging it (tests fail on it) and returns the previous
/// handler; an empty handler does nothing.
std::function<void(std::exception_ptr)> setUnhandledTaskErrorHandler(
    std::function<void(std::exception_ptr)> handler);

/// Thrown inside a task when what it awaits has been destroyed. It unwinds the task, releasing everything the
/// task holds, and launch() ignores it. Not a std::exception, so that error handling lets it through.
struct TaskAbandoned { };

/// Resumes a suspended coroutine, once. When the last copy is destroyed unused, the coroutine resumes with
/// TaskAbandoned. Use and destroy it on the coroutine's thread.
class Resumption {
public:
    /// `isAbandoned` is set before an abandoned coroutine resumes; it lives in the coroutine's awaiter.
    Resumption(std::coroutine_handle<> waiting, bool &isAbandoned);

    void operator()() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

/// Base of this program's awaiters: the code that ends the wait holds the resumption. Awaitables must have
/// trivial members or be returned by a function, because g++ 12 copies the bytes of an awaitable written in
/// place.
class AbandonableAwaiter {
public:
    bool await_ready() const noexcept { return false; }
    void await_resume() const {
        if (m_isAbandoned)
            throw TaskAbandoned {};
    }

protected:
    Resumption resumption(std::coroutine_handle<> waiting) { return { waiting, m_isAbandoned }; }

private:
    bool m_isAbandoned = false;
};
