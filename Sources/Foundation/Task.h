#pragma once

#include <QCoroTask>

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>

/// A long operation that may suspend. It starts at once and runs up to its first suspension.
template <typename T = void>
using Task = QCoro::Task<T>;

/// Lets `task` run to its end unattended. An exception that leaves it is a defect of the program: it is
/// logged and handed to the handler of setUnhandledTaskErrorHandler.
void launch(Task<> task);

/// Sets what launch() does with an exception besides logging it (tests fail on it) and gives what it did
/// before; an empty handler does nothing more.
std::function<void(std::exception_ptr)> setUnhandledTaskErrorHandler(
    std::function<void(std::exception_ptr)> handler);

/// Thrown inside a task when what it waits for has gone and cannot answer any more. It unwinds the task, so
/// that everything the task holds is released, and ends it quietly in launch(). Not a std::exception, because
/// code that deals with failures must let it pass.
struct TaskAbandoned { };

/// The right to resume a suspended coroutine, once. When the last copy goes unused, the coroutine resumes
/// with TaskAbandoned. Resume it, and let an unused one go, on the thread of the coroutine.
class Resumption {
public:
    /// `isAbandoned` is set before an abandoned coroutine resumes; it lives in the coroutine's awaiter.
    Resumption(std::coroutine_handle<> waiting, bool &isAbandoned);

    void operator()() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

/// Base of the awaiters of this program: whoever ends the wait holds its resumption. What makes
/// them has trivial members or comes from a function: g++ 12 copies the bytes of an awaitable written in
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
