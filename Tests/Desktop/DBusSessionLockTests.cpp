#include "Platform/Linux/Desktop/DBusSessionLock.h"

#include "Support/FakeSessionLock.h"
#include "Support/UntilTrue.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include <chrono>

/// A screen saver of one of the two kinds.
class FakeScreenSaver : public QObject {
    Q_OBJECT

public:
    FakeScreenSaver(const QString &service, const QString &path)
        : m_service(service)
        , m_path(path) {
        m_bus.registerObject(path, service, this, QDBusConnection::ExportAllSlots);
        EXPECT_TRUE(m_bus.registerService(service));
    }
    ~FakeScreenSaver() override {
        m_bus.unregisterService(m_service);
        QDBusConnection::disconnectFromBus(m_bus.name());
    }

    void lock(bool isLocked) {
        active = isLocked;
        tell(isLocked);
    }
    void tell(bool isLocked) {
        auto signal = QDBusMessage::createSignal(m_path, m_service, QStringLiteral("ActiveChanged"));
        m_bus.send(signal << isLocked);
    }

    bool active = false;
    int askCount = 0;

public Q_SLOTS:
    bool GetActive() {
        ++askCount;
        return active;
    }

private:
    const QString m_service;
    const QString m_path;
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("saver"));
};

/// The session of a login manager.
class FakeLoginSession : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Session")
    Q_PROPERTY(bool LockedHint MEMBER lockedHint)
    Q_PROPERTY(qulonglong TimestampMonotonic MEMBER login)

public:
    explicit FakeLoginSession(QObject *session)
        : QDBusAbstractAdaptor(session) { }

    bool lockedHint = false;
    /// Microseconds on the steady clock; 0 while nobody has logged in.
    qulonglong login = 0;
};

namespace {
const QString freedesktop = QStringLiteral("org.freedesktop.ScreenSaver");
const QString freedesktopPath = QStringLiteral("/org/freedesktop/ScreenSaver");
const QString gnome = QStringLiteral("org.gnome.ScreenSaver");
const QString gnomePath = QStringLiteral("/org/gnome/ScreenSaver");

QDBusConnection noBus() {
    return QDBusConnection(QStringLiteral("nowhere"));
}

/// The bus of the virtual desktop stands for that of the system.
QDBusConnection standIn() {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("system"));
}

class FakeDesktop {
public:
    SessionLock &sessionLock() { return m_lock; }
    void lock(bool isLocked) { m_lock.locked = isLocked; }

private:
    FakeSessionLock m_lock;
};

class DesktopWithScreenSaver {
public:
    SessionLock &sessionLock() { return m_lock; }
    void lock(bool isLocked) { m_saver.lock(isLocked); }

private:
    FakeScreenSaver m_saver { freedesktop, freedesktopPath };
    DBusSessionLock m_lock { QDBusConnection::sessionBus(), &noBus };
};

template <typename Desktop>
class SessionLockContract : public testing::Test {
protected:
    Desktop m_desktop;
};

using Desktops = testing::Types<FakeDesktop, DesktopWithScreenSaver>;
TYPED_TEST_SUITE(SessionLockContract, Desktops);

TYPED_TEST(SessionLockContract, FollowsTheDesktop) {
    SessionLock &lock = this->m_desktop.sessionLock();
    EXPECT_FALSE(lock.isLocked());
    this->m_desktop.lock(true);
    EXPECT_TRUE(untilTrue([&] { return lock.isLocked(); }));
    this->m_desktop.lock(false);
    EXPECT_TRUE(untilTrue([&] { return !lock.isLocked(); }));
}

TEST(DBusSessionLock, AsksWhatIsLockedAlready) {
    FakeScreenSaver saver(gnome, gnomePath);
    saver.active = true;
    DBusSessionLock lock(QDBusConnection::sessionBus(), &noBus);
    EXPECT_TRUE(untilTrue([&] { return lock.isLocked(); }));
}

TEST(DBusSessionLock, BelievesAnswersAndNotWhoeverSpeaks) {
    FakeScreenSaver saver(gnome, gnomePath);
    saver.active = true;
    DBusSessionLock lock(QDBusConnection::sessionBus(), &noBus);
    ASSERT_TRUE(untilTrue([&] { return lock.isLocked(); }));
    const int before = saver.askCount;
    saver.tell(false);
    EXPECT_TRUE(untilTrue([&] { return saver.askCount > before + 1; }));
    EXPECT_TRUE(lock.isLocked());
}

TEST(DBusSessionLock, AScreenSaverThatGoesLocksNobodyOut) {
    auto saver = std::make_unique<FakeScreenSaver>(freedesktop, freedesktopPath);
    saver->active = true;
    DBusSessionLock lock(QDBusConnection::sessionBus(), &noBus);
    ASSERT_TRUE(untilTrue([&] { return lock.isLocked(); }));
    saver.reset();
    EXPECT_TRUE(untilTrue([&] { return !lock.isLocked(); }));
}

TEST(DBusSessionLock, FollowsTheLoginManager) {
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("login"));
    QObject session;
    auto *state = new FakeLoginSession(&session);
    ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/login1/session/auto"), &session));
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.login1")));
    DBusSessionLock lock(noBus(), &standIn);
    const auto change = [&](bool isLocked) {
        state->lockedHint = isLocked;
        auto signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1/session/_32"),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
        bus.send(signal << QStringLiteral("org.freedesktop.login1.Session")
                        << QVariantMap { { QStringLiteral("LockedHint"), isLocked } } << QStringList());
    };
    EXPECT_TRUE(untilTrue([&] {
        change(true);
        return lock.isLocked();
    }));
    change(false);
    EXPECT_TRUE(untilTrue([&] { return !lock.isLocked(); }));
}

TEST(DBusSessionLock, KnowsHowLongTheUserHasBeenLoggedIn) {
    using std::chrono::steady_clock;
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("login"));
    QObject session;
    auto *state = new FakeLoginSession(&session);
    const auto login = steady_clock::now().time_since_epoch() - std::chrono::seconds(90);
    state->login = qulonglong(std::chrono::duration_cast<std::chrono::microseconds>(login).count());
    ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/login1/session/auto"), &session));
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.login1")));
    const DBusSessionLock lock(noBus(), &standIn);
    EXPECT_EQ(lock.age(), std::nullopt);
    ASSERT_TRUE(untilTrue([&] { return lock.age().has_value(); }));
    EXPECT_NEAR(*lock.age(), 90, 30);
}

TEST(DBusSessionLock, IsOpenWhereNobodyTells) {
    DBusSessionLock lock(QDBusConnection::sessionBus(), &noBus);
    DBusSessionLock busless(noBus(), &noBus);
    bool isOver = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { isOver = true; }, Qt::QueuedConnection);
    EXPECT_TRUE(untilTrue([&] { return isOver; }));
    EXPECT_FALSE(lock.isLocked());
    EXPECT_FALSE(busless.isLocked());
    EXPECT_EQ(busless.age(), std::nullopt);
}
} // namespace

#include "DBusSessionLockTests.moc"
