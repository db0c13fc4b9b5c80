#include "Platform/Linux/Desktop/DBusSessionLock.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <algorithm>

namespace {
const QString loginManager = QStringLiteral("org.freedesktop.login1");
const QString loginSession = QStringLiteral("org.freedesktop.login1.Session");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString freedesktopSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString gnomeSaver = QStringLiteral("org.gnome.ScreenSaver");

/// The call must not start the service.
QDBusMessage question(
    const QString &service, const QString &path, const QString &interface, const QString &name) {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, name);
    message.setAutoStartService(false);
    return message;
}

QDBusMessage freedesktopQuestion() {
    return question(freedesktopSaver, QStringLiteral("/org/freedesktop/ScreenSaver"), freedesktopSaver,
        QStringLiteral("GetActive"));
}

QDBusMessage gnomeQuestion() {
    return question(
        gnomeSaver, QStringLiteral("/org/gnome/ScreenSaver"), gnomeSaver, QStringLiteral("GetActive"));
}

QDBusMessage questionForSession(const QString &property) {
    return question(loginManager, QStringLiteral("/org/freedesktop/login1/session/auto"), properties,
               QStringLiteral("Get"))
        << loginSession << property;
}

QDBusMessage loginQuestion() {
    return questionForSession(QStringLiteral("LockedHint"));
}

/// A screen saver replies with a bool, the login manager with a bool in a variant.
bool isYes(const QDBusMessage &answer) {
    const QVariant value = answer.arguments().value(0);
    const QVariant plain = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    return answer.type() == QDBusMessage::ReplyMessage && plain.toBool();
}
} // namespace

DBusSessionLock::DBusSessionLock(const QDBusConnection &sessionBus, Connect connectToSystemBus) {
    if (sessionBus.isConnected())
        listenOnSessionBus(sessionBus);
    m_connecting.async([this, connectToSystemBus] {
        const QDBusConnection bus = connectToSystemBus();
        if (bus.isConnected())
            QMetaObject::invokeMethod(this, [this, bus] { listenOnSystemBus(bus); });
    });
}

bool DBusSessionLock::isLocked() {
    const bool isLocked = std::ranges::any_of(m_sources, &Source::isLocked);
    // Ask again, so that a source which has exited since then does not count as locked for ever.
    if (isLocked)
        ask();
    return isLocked;
}

std::optional<double> DBusSessionLock::age() const {
    if (!m_login)
        return {};
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch() - *m_login)
        .count();
}

QDBusConnection DBusSessionLock::systemBus() {
    return QDBusConnection::systemBus();
}

// Both functions leave the sender empty: for a named sender Qt would block on a GetNameOwner call.
void DBusSessionLock::listenOnSessionBus(QDBusConnection bus) {
    for (const QString &interface : { freedesktopSaver, gnomeSaver })
        bus.connect({}, {}, interface, QStringLiteral("ActiveChanged"), this, SLOT(ask()));
    m_sources.push_back({ bus, &freedesktopQuestion });
    m_sources.push_back({ bus, &gnomeQuestion });
    ask();
}

void DBusSessionLock::listenOnSystemBus(QDBusConnection bus) {
    bus.connect(
        {}, {}, properties, QStringLiteral("PropertiesChanged"), { loginSession }, {}, this, SLOT(ask()));
    m_sources.push_back({ bus, &loginQuestion });
    ask();
    askForLogin(bus);
}

void DBusSessionLock::ask() {
    for (std::size_t source = 0; source < m_sources.size(); ++source)
        ask(source);
}

void DBusSessionLock::ask(std::size_t source) {
    const Source &asked = m_sources[source];
    auto *watcher = new QDBusPendingCallWatcher(asked.bus.asyncCall(asked.question()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, source] {
        watcher->deleteLater();
        m_sources[source].isLocked = isYes(watcher->reply());
    });
}

void DBusSessionLock::askForLogin(QDBusConnection bus) {
    const QDBusMessage question = questionForSession(QStringLiteral("TimestampMonotonic"));
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *watcher;
        const qulonglong login = answer.isError() ? 0 : answer.value().variant().toULongLong();
        if (login > 0)
            m_login = std::chrono::microseconds(login);
    });
}
