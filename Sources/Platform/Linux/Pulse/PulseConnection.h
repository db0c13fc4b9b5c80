#pragma once

#include "Foundation/Error.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

struct pa_context;
struct pa_threaded_mainloop;

/// The program's connection to the sound server, PulseAudio or PipeWire alike, and the audio thread that
/// serves it.
///
/// The connection opens in the background and stays open; when the server goes, the next use connects anew.
/// The class can be locked: while it is, the audio thread runs no callback. Everything that works on the
/// context or on its streams does so under this lock or on the audio thread.
class PulseConnection {
public:
    using Lock = std::unique_lock<PulseConnection>;
    using Deadline = std::chrono::steady_clock::time_point;

    /// How long anything may wait for the sound server. A healthy one answers in milliseconds.
    static constexpr std::chrono::seconds patience { 2 };

    PulseConnection();
    /// Every stream must be closed.
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    /// Not on the audio thread.
    void lock();
    void unlock();

    /// The context once the server has accepted it. Throws SystemError with a text that says what to do.
    pa_context *readyContext(Lock &lock, Deadline deadline);

    /// Gives up a context that does not answer; its streams end. Locked.
    void dropContext();

    /// Waits until `condition` holds, testing it again after every notify(); whether it held before
    /// `deadline`.
    template <typename Condition>
    bool waitUntil(Lock &lock, Deadline deadline, Condition condition) {
        return m_changed.wait_until(lock, deadline, condition);
    }

    /// Something that a waiting condition tests has changed. Locked or on the audio thread.
    void notify() { m_changed.notify_all(); }

    /// What the server's error code `code` means for the user. A refusal is remembered.
    SystemError failure(int code);

    /// Keeps how the latest opening of a microphone ended, with a failure or without. Any thread.
    void setOpeningFailure(std::optional<SystemError> failure);

    /// Why a microphone could not be opened a moment ago; empty if it could. Any thread, at once.
    std::optional<SystemError> recentOpeningFailure() const;

    /// Whether the latest answer of the server was that this program may not use it. Any thread.
    bool isAccessDenied() const { return m_isAccessDenied; }

    /// Asks a server that refused once more, in the background. Any thread but the audio thread.
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
