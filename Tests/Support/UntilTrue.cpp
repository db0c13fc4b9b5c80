#include "Support/UntilTrue.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

bool untilTrue(const std::function<bool()> &condition) {
    const QDeadlineTimer deadline(60s);
    // The condition may depend on something that sends no event, so look again now and then.
    QTimer wakeUp;
    wakeUp.start(2ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
