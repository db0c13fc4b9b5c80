// Trays that come after the program: at a login both start at the same time.

#include "Desktop/StatusNotifierHost.h"
#include "Platform/Linux/Desktop/DBusStatusTray.h"
#include "Platform/Linux/X11/X11StatusTray.h"
#include "Support/SignalCounter.h"
#include "Support/UntilTrue.h"

#include "desktop-driver/ProgramWindows.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/Waiting.h"

#include <QDBusAbstractAdaptor>
#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

/// A login manager that has just let the user in. For the programs that are started here the bus of the
/// virtual desktop stands for that of the system.
class LoginManager : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Session")
    Q_PROPERTY(qulonglong TimestampMonotonic MEMBER login)

public:
    explicit LoginManager(QObject *session)
        : QDBusAbstractAdaptor(session) {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        EXPECT_TRUE(m_bus.registerObject(QStringLiteral("/org/freedesktop/login1/session/auto"), session));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.login1")));
    }

    qulonglong login = qulonglong(std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch())
                                      .count());

private:
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("login"));
};

namespace {

/// A tray whose items are windows.
class X11Tray {
public:
    X11Tray() {
        m_process.start(QStringLiteral("trayer"),
            { "--edge", "bottom", "--align", "right", "--widthtype", "request", "--height", "28" });
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~X11Tray() {
        m_process.terminate();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

class LateTray : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(prepareHome({}));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
        ASSERT_FALSE(waitUntil(isStudioOpen, 2)) << "the session has just begun";
    }

    void TearDown() override {
        EXPECT_FALSE(isStudioOpen());
        EXPECT_TRUE(m_program.quit());
    }

    static bool isStudioOpen() { return !ProgramWindows::ofWidth(500, 1920).isNull(); }

    QObject m_session;
    LoginManager m_login { &m_session };
    RunningProgram m_program;
};

} // namespace

TEST_F(LateTray, OnTheBusGetsTheItem) {
    const StatusNotifierHost panel;
    EXPECT_TRUE(untilTrue([&panel] { return !panel.items().isEmpty(); }));
    EXPECT_EQ(panel.property("Title").toString(), QString("Tolmi"));
    EXPECT_FALSE(panel.menu().isEmpty());
}

TEST_F(LateTray, OfWindowsGetsTheItem) {
    const X11Tray tray;
    EXPECT_TRUE(untilTrue([] { return !ProgramWindows::ofWidth(10, 40).isNull(); }));
}

TEST(DBusStatusTray, FollowsThePanel) {
    DBusStatusTray tray;
    SignalCounter appeared(&tray, &StatusTray::appeared);
    EXPECT_FALSE(tray.isThere());
    for (int time = 1; time <= 2; ++time) {
        std::optional<StatusNotifierHost> panel(std::in_place);
        EXPECT_TRUE(untilTrue([&tray] { return tray.isThere(); }));
        EXPECT_EQ(appeared.count(), time);
        panel.reset();
        EXPECT_TRUE(untilTrue([&tray] { return !tray.isThere(); }));
    }
}

TEST(DBusStatusTray, FindsThePanelThatIsThere) {
    const StatusNotifierHost panel;
    const DBusStatusTray tray;
    EXPECT_TRUE(untilTrue([&tray] { return tray.isThere(); }));
}

TEST(DBusStatusTray, WaitsForThePanelBehindTheWatcher) {
    StatusNotifierHost watcher;
    watcher.setHasHost(false);
    DBusStatusTray tray;
    const int before = watcher.askCount();
    EXPECT_TRUE(untilTrue([&] { return watcher.askCount() > before; }));
    EXPECT_FALSE(tray.isThere());
    watcher.setHasHost(true);
    EXPECT_TRUE(untilTrue([&tray] { return tray.isThere(); }));
}

TEST(DBusStatusTray, IsNowhereWithoutABus) {
    const DBusStatusTray tray { QDBusConnection(QStringLiteral("nowhere")) };
    EXPECT_FALSE(tray.isThere());
}

TEST(X11StatusTray, FollowsTheTray) {
    X11StatusTray status;
    SignalCounter appeared(&status, &StatusTray::appeared);
    EXPECT_FALSE(status.isThere());
    std::optional<X11Tray> tray(std::in_place);
    EXPECT_TRUE(untilTrue([&appeared] { return appeared.count() == 1; }));
    EXPECT_TRUE(status.isThere());
    tray.reset();
    EXPECT_TRUE(untilTrue([&status] { return !status.isThere(); }));
}

#include "LateTrayTests.moc"
