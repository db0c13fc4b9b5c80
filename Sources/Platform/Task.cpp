#include "Platform/Task.h"

#include "Platform/Error.h"
#include "Platform/Log.h"

namespace {
std::function<void(std::exception_ptr)> &unhandledTaskErrorHandler() {
    static std::function<void(std::exception_ptr)> handler;
    return handler;
}

Task<> supervise(Task<> task) {
    try {
        co_await task;
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
