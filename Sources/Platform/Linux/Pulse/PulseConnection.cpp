#include "Platform/Linux/Pulse/PulseConnection.h"

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/thread-mainloop.h>

#include <cstdlib>

PulseConnection::PulseConnection()
    : m_loop(pa_threaded_mainloop_new()) {
    // Must precede the start: on a running thread the library would name the caller's thread instead.
    if (m_loop)
        pa_threaded_mainloop_set_name(m_loop, "Tolmi.Audio");
    if (!m_loop || pa_threaded_mainloop_start(m_loop) < 0)
        throw SystemError(QStringLiteral("The audio thread could not be started."));
    const Lock lock(*this);
    connect();
}

PulseConnection::~PulseConnection() {
    lock();
    dropContext();
    unlock();
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

void PulseConnection::lock() {
    pa_threaded_mainloop_lock(m_loop);
}

void PulseConnection::unlock() {
    pa_threaded_mainloop_unlock(m_loop);
}

bool PulseConnection::isContextUsable() const {
    return m_context && PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context));
}

bool PulseConnection::isContextReady() const {
    return m_context && pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

void PulseConnection::connect() {
    dropContext();
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "Tolmi");
    if (!m_context)
        return;
    const auto changed
        = [](pa_context *, void *self) { static_cast<PulseConnection *>(self)->contextChanged(); };
    pa_context_set_state_callback(m_context, changed, this);
    // No autospawn: it would block the audio thread until the server runs, and the desktop starts its own.
    // The context's state reports the outcome.
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

void PulseConnection::dropContext() {
    if (!m_context)
        return;
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    m_context = nullptr;
}

void PulseConnection::contextChanged() {
    if (isContextReady())
        m_isAccessDenied = false;
    else if (!isContextUsable())
        m_isAccessDenied = pa_context_errno(m_context) == PA_ERR_ACCESS;
    notify();
}

pa_context *PulseConnection::readyContext(Lock &lock, Deadline deadline) {
    if (!isContextUsable())
        connect();
    const bool isAnswered
        = waitUntil(lock, deadline, [this] { return isContextReady() || !isContextUsable(); });
    if (!isAnswered) {
        dropContext();
        throw SystemError(QStringLiteral("The sound server does not answer. Restart it, then try again."));
    }
    if (!isContextReady())
        throw failure(m_context ? pa_context_errno(m_context) : PA_ERR_CONNECTIONTERMINATED);
    return m_context;
}

SystemError PulseConnection::failure(int code) {
    switch (code) {
    case PA_ERR_ACCESS:
        m_isAccessDenied = true;
        return SystemError(
            QStringLiteral("The sound server refuses access to the microphone. Allow it, then try again."));
    case PA_ERR_NOENTITY:
        return SystemError(QStringLiteral("No microphone was found. Connect one or choose an input in the "
                                          "sound settings, then try again."));
    case PA_ERR_CONNECTIONREFUSED:
    case PA_ERR_CONNECTIONTERMINATED:
        return SystemError(
            QStringLiteral("No sound server is running. Start PipeWire or PulseAudio, then try again."));
    default:
        return SystemError(QStringLiteral("The microphone could not be opened: %1. Check the sound settings, "
                                          "then try again.")
                               .arg(QString::fromUtf8(pa_strerror(code))));
    }
}

void PulseConnection::setOpeningFailure(std::optional<SystemError> failure) {
    const std::lock_guard lock(m_failureMutex);
    m_openingFailure = std::move(failure);
    m_openingEnd = std::chrono::steady_clock::now();
}

std::optional<SystemError> PulseConnection::recentOpeningFailure() const {
    // Covers the fallback from one kind of recording to the other within a start, but is over before the next
    // start, when the microphone may be back.
    constexpr std::chrono::milliseconds recent { 500 };
    const std::lock_guard lock(m_failureMutex);
    const bool isRecent = std::chrono::steady_clock::now() - m_openingEnd < recent;
    return isRecent ? m_openingFailure : std::nullopt;
}

void PulseConnection::recheckAccess() {
    const Lock lock(*this);
    const bool isUnderWay = isContextUsable() && !isContextReady();
    if (!isUnderWay)
        connect();
}
