// Loaded into the program under test before its own libraries: measures how long its main loop stands still,
// and slows its disk down.

#include "MainLoopReport.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <time.h>
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

/// Whether the main thread waits for something other than a processor.
bool isMainThreadAsleep() {
    std::ifstream file("/proc/self/stat");
    std::string process;
    std::string name;
    char state = 0;
    file >> process >> name >> state;
    return state == 'S' || state == 'D';
}

milliseconds processorTime(clockid_t clock) {
    timespec time {};
    clock_gettime(clock, &time);
    return milliseconds(int64_t(time.tv_sec) * 1000 + time.tv_nsec / 1000000);
}

/// Sends the main loop one event after the other and measures how long each takes to be handled: the time
/// that the main thread sleeps or computes meanwhile. That other programs have the processors does not count.
class Watch {
public:
    Watch() {
        // Children are not looked at.
        unsetenv("LD_PRELOAD");
        pthread_getcpuclockid(pthread_self(), &m_mainClock);
        std::thread([this] { run(); }).detach();
    }

private:
    void run() {
        for (;;) {
            const auto before = steady_clock::now();
            std::this_thread::sleep_for(milliseconds(5));
            const auto step = std::chrono::duration_cast<milliseconds>(steady_clock::now() - before);
            const std::lock_guard lock(m_mutex);
            if (m_hasEnded)
                return;
            if (m_isAwaited)
                note(step);
            else
                send();
        }
    }

    void send() {
        QCoreApplication *const application = QCoreApplication::instance();
        if (!application || QCoreApplication::startingUp())
            return;
        if (!std::exchange(m_isStarted, true))
            qAddPostRoutine(end);
        m_isAwaited = true;
        m_asleep = milliseconds(0);
        m_computedBefore = processorTime(m_mainClock);
        QMetaObject::invokeMethod(
            application, [this] { m_isAwaited = false; }, Qt::QueuedConnection);
    }

    void note(milliseconds step) {
        if (isMainThreadAsleep())
            m_asleep += step;
        const milliseconds pause = m_asleep + processorTime(m_mainClock) - m_computedBefore;
        report->longestPause = std::max<int64_t>(report->longestPause, pause.count());
    }

    static void end();

    clockid_t m_mainClock {};
    std::mutex m_mutex;
    bool m_isStarted = false;
    bool m_hasEnded = false;
    milliseconds m_asleep { 0 };
    milliseconds m_computedBefore { 0 };
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
