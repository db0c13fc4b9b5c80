// The real program on Wayland.

#include "Platform/Linux/Wayland/WaylandActiveWindow.h"
#include "Support/UntilTrue.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace {
bool isStudioInFront() {
    const auto front = WaylandActiveWindow::current();
    return front && front->applicationID.compare(QLatin1String("tolmi"), Qt::CaseInsensitive) == 0;
}

/// Nothing of X11 is there: no key yet, but a program in its own windows.
TEST(WaylandStart, WithoutAnXServerTheProgramStarts) {
    qunsetenv("DISPLAY");
    qunsetenv("QT_QPA_PLATFORM");
    QProcess native;
    native.start(QStringLiteral(TOLMI_PROGRAM), {});
    EXPECT_TRUE(untilTrue(&isStudioInFront));
    native.terminate();
    EXPECT_TRUE(native.waitForFinished());
    EXPECT_EQ(native.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(native.exitCode(), 0);
}

TEST(WaylandStart, WithoutADesktopItSaysSoAndEnds) {
    // Under its usual name stands the socket of a session that is not this one.
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/wayland-0");
    ASSERT_TRUE(QFile::link(qEnvironmentVariable("WAYLAND_DISPLAY"), usual));
    for (const char *name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
        qunsetenv(name);
    QProcess lost;
    lost.start(QStringLiteral(TOLMI_PROGRAM), {});
    EXPECT_TRUE(lost.waitForFinished());
    EXPECT_EQ(lost.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(lost.exitCode(), 1);
    EXPECT_TRUE(lost.readAllStandardError().contains("terminal of your desktop session"));
}
} // namespace
