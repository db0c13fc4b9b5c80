#include "Support/UntilTrue.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

bool untilTrue(const std::function<bool()> &condition) {
    const QDeadlineTimer deadline(60000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}
