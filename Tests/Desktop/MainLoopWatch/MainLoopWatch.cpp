// Loaded into the program under test before its own libraries: measures how long its main loop stands still,
// and slows its disk down.

#include "MainLoopReport.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <thread>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {
using std::chrono::milliseconds;
using std::chrono::steady_clock;

MainLoopReport *sharedReport() {
    const char *path = std::getenv(MainLoopReport::pathVariable);
    const int file = path ? open(path, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0)
        return nullptr;
    void *memory = mmap(nullptr, sizeof(MainLoopReport), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    return memory == MAP_FAILED ? nullptr : static_cast<MainLoopReport *>(memory);
}

MainLoopReport *const report = sharedReport();

/// Sends the main loop one event after the other and waits for each.
class Watch {
public:
    Watch() {
        // Children are not looked at.
        unsetenv("LD_PRELOAD");
        std::thread([this] { run(); }).detach();
    }

private:
    void run() {
        for (;; std::this_thread::sleep_for(milliseconds(5))) {
            const std::lock_guard lock(m_mutex);
            if (m_hasEnded)
                return;
            if (!m_isAwaited)
                send();
            else
                note();
        }
    }

    void send() {
        QCoreApplication *const application = QCoreApplication::instance();
        if (!application || QCoreApplication::startingUp())
            return;
        if (!std::exchange(m_isStarted, true))
            qAddPostRoutine(end);
        m_isAwaited = true;
        m_sent = steady_clock::now();
        QMetaObject::invokeMethod(
            application, [this] { m_isAwaited = false; }, Qt::QueuedConnection);
    }

    void note() {
        const auto pause = std::chrono::duration_cast<milliseconds>(steady_clock::now() - m_sent).count();
        report->longestPause = std::max<int64_t>(report->longestPause, pause);
    }

    static void end();

    std::mutex m_mutex;
    bool m_isStarted = false;
    bool m_hasEnded = false;
    steady_clock::time_point m_sent;
    std::atomic<bool> m_isAwaited = false;
};

// Never destroyed: the thread goes on until the process has ended.
Watch *const watch = report ? new Watch : nullptr;

void Watch::end() {
    const std::lock_guard lock(watch->m_mutex);
    watch->m_hasEnded = true;
}
} // namespace

extern "C" int fdatasync(int file) {
    if (report)
        std::this_thread::sleep_for(milliseconds(report->syncDelay));
    static const auto original = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fdatasync"));
    return original(file);
}
