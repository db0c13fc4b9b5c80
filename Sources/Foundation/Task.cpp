#include "Foundation/Task.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"

#include <utility>

namespace {
std::function<void(std::exception_ptr)> &unhandledTaskErrorHandler() {
    static std::function<void(std::exception_ptr)> handler;
    return handler;
}

Task<> supervise(Task<> task) {
    try {
        co_await task;
    } catch (const TaskAbandoned &) {
        co_return;
    } catch (...) {
        const std::exception_ptr error = std::current_exception();
        logLine(QStringLiteral("Tolmi: a task failed: ") + localizedDescription(error));
        if (const auto &handler = unhandledTaskErrorHandler())
            handler(error);
    }
}
} // namespace

void launch(Task<> task) {
    supervise(std::move(task));
}

std::function<void(std::exception_ptr)> setUnhandledTaskErrorHandler(
    std::function<void(std::exception_ptr)> handler) {
    return std::exchange(unhandledTaskErrorHandler(), std::move(handler));
}

struct Resumption::State {
    std::coroutine_handle<> waiting;
    bool &isAbandoned;

    ~State() {
        if (!waiting)
            return;
        isAbandoned = true;
        waiting.resume();
    }
};

Resumption::Resumption(std::coroutine_handle<> waiting, bool &isAbandoned)
    : m_state(new State { waiting, isAbandoned }) { }

void Resumption::operator()() const {
    if (const auto waiting = std::exchange(m_state->waiting, {}))
        waiting.resume();
}
