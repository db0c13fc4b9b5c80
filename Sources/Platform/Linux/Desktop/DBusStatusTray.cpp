#include "Platform/Linux/Desktop/DBusStatusTray.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {
/// The name on the bus and the interface of those who know the panels.
const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
} // namespace

// The senders stay open: the toolkit would wait for the bus to tell who bears their names.
DBusStatusTray::DBusStatusTray(const QDBusConnection &bus)
    : m_bus(bus) {
    if (!m_bus.isConnected())
        return;
    m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("NameOwnerChanged"), { watcher }, {}, this, SLOT(ask()));
    for (const QString &change :
        { QStringLiteral("StatusNotifierHostRegistered"), QStringLiteral("StatusNotifierHostUnregistered") })
        m_bus.connect({}, watcherPath, watcher, change, this, SLOT(ask()));
    ask();
}

void DBusStatusTray::ask() {
    auto question = QDBusMessage::createMethodCall(
        watcher, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    // Nobody is started for the sake of the question.
    question.setAutoStartService(false);
    question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    auto *answered = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answered, &QDBusPendingCallWatcher::finished, this, [this, answered] {
        answered->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *answered;
        take(!answer.isError() && answer.value().variant().toBool());
    });
}

void DBusStatusTray::take(bool isThere) {
    if (!std::exchange(m_isThere, isThere) && isThere)
        Q_EMIT appeared();
}
