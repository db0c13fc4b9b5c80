#include "Support/ResidentMemory.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {
qint64 statusValue(const QByteArray &name) {
    QFile status(QStringLiteral("/proc/self/status"));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').at(1).toLongLong() * 1024;
    }
    ADD_FAILURE() << "no " << name.toStdString();
    return 0;
}
} // namespace

qint64 residentMemory() {
    return statusValue("VmRSS:");
}

qint64 peakResidentMemory() {
    return statusValue("VmHWM:");
}

void resetPeakResidentMemory() {
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    ASSERT_TRUE(reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    ASSERT_EQ(reset.write("5"), 1);
}
