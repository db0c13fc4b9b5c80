#pragma once

#include "Foundation/Error.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

struct pa_context;
struct pa_threaded_mainloop;

/// The program's connection to the sound server (PulseAudio or PipeWire) and its audio thread.
///
/// The connection opens in the background and stays open; if the server exits, the next use reconnects. While
/// the object is locked, the audio thread runs no callbacks. The context and its streams may be used only
/// with this lock held or on the audio thread.
class PulseConnection {
public:
    using Lock = std::unique_lock<PulseConnection>;
    using Deadline = std::chrono::steady_clock::time_point;

    /// Limit for any wait for the sound server. A healthy one answers in milliseconds.
    static constexpr std::chrono::seconds patience { 2 };

    PulseConnection();
    /// All streams must be closed.
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    /// Not on the audio thread.
    void lock();
    void unlock();

    /// Waits until the server has accepted the context. Throws SystemError with a message that says what to
    /// do.
    pa_context *readyContext(Lock &lock, Deadline deadline);

    /// Drops a context that does not respond; its streams end. Requires the lock.
    void dropContext();

    /// Waits until `condition` holds, testing it after every notify(). False if `deadline` passes first.
    template <typename Condition>
    bool waitUntil(Lock &lock, Deadline deadline, Condition condition) {
        return m_changed.wait_until(lock, deadline, condition);
    }

    /// Makes waiting conditions be tested again. Requires the lock or the audio thread.
    void notify() { m_changed.notify_all(); }

    /// The error to show the user for the server's error `code`. Remembers a denied access.
    SystemError failure(int code);

    /// Stores the outcome of the latest attempt to open a microphone. Any thread.
    void setOpeningFailure(std::optional<SystemError> failure);

    /// Why a very recent attempt to open a microphone failed; empty if it did not. Any thread; never waits.
    std::optional<SystemError> recentOpeningFailure() const;

    /// Whether the server's latest answer denied access. Any thread.
    bool isAccessDenied() const { return m_isAccessDenied; }

    /// Asks a server that denied access again, in the background. Any thread but the audio thread.
    void recheckAccess();

private:
    bool isContextUsable() const;
    bool isContextReady() const;
    void connect();
    void contextChanged();

    pa_threaded_mainloop *m_loop = nullptr;
    pa_context *m_context = nullptr;
    std::condition_variable_any m_changed;
    std::atomic<bool> m_isAccessDenied = false;

    mutable std::mutex m_failureMutex;
    std::optional<SystemError> m_openingFailure;
    Deadline m_openingEnd;
};
