#include "dictate/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

bool waitUntil(const std::function<bool()> &condition, double seconds) {
    const QDeadlineTimer deadline(std::chrono::milliseconds(qint64(seconds * 1000)));
    // The condition may depend on something that causes no event, so poll as well.
    QTimer wakeUp;
    wakeUp.start(10ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void pause(double seconds) {
    waitUntil([] { return false; }, seconds);
}
