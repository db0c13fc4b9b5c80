#include "Platform/Linux/Files/DiskWait.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include <fcntl.h>

namespace {
int resultOf(int (*operation)(int), int file) {
    return operation(file) == 0 ? 0 : errno;
}
} // namespace

/// Shared with operations that outlive the wait.
struct DiskWait::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<std::chrono::steady_clock::time_point> end;
};

DiskWait::DiskWait()
    : m_state(std::make_shared<State>()) { }

int DiskWait::waitFor(int (*operation)(int), int file) {
    const auto result = std::make_shared<std::optional<int>>();
    const auto copy = std::make_shared<FileDescriptor>(::fcntl(file, F_DUPFD_CLOEXEC, 0));
    if (!copy->isValid())
        return resultOf(operation, file);
    try {
        std::thread([state = m_state, result, copy, operation] {
            const int error = resultOf(operation, copy->get());
            const std::lock_guard lock(state->mutex);
            *result = error;
            state->changed.notify_all();
        }).detach();
    } catch (const std::system_error &) {
        return resultOf(operation, file);
    }
    std::unique_lock lock(m_state->mutex);
    while (!result->has_value()) {
        // The limit may be set during the wait.
        if (!m_state->end)
            m_state->changed.wait(lock);
        else if (m_state->changed.wait_until(lock, *m_state->end) == std::cv_status::timeout)
            break;
    }
    return result->value_or(0);
}

void DiskWait::limit(std::chrono::milliseconds time) {
    const std::lock_guard lock(m_state->mutex);
    m_state->end = std::chrono::steady_clock::now() + time;
    m_state->changed.notify_all();
}
