#include "Main/UnixSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>

namespace {
// Signal handlers can reach nothing but static storage.
volatile sig_atomic_t wakeUpDescriptor = -1;

void wakeUp(int) {
    const uint64_t one = 1;
    const ssize_t written = write(wakeUpDescriptor, &one, sizeof one);
    static_cast<void>(written);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : { SIGTERM, SIGINT, SIGHUP })
        sigaction(signal, &action, nullptr);
}
} // namespace

UnixSignals::UnixSignals(std::function<void()> onEnd)
    : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(m_descriptor, QSocketNotifier::Read) {
    wakeUpDescriptor = m_descriptor;
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this, onEnd = std::move(onEnd)] {
        m_notifier.setEnabled(false);
        onEnd();
    });
    setHandler(wakeUp);
}

UnixSignals::~UnixSignals() {
    setHandler(SIG_DFL);
    close(m_descriptor);
}
