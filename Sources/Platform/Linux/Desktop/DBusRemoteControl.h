#pragma once

#include "Platform/RemoteControl.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QSet>
#include <QVariantMap>

class QDBusMessage;

/// The interface org.tolmi.Tolmi1 on the session bus; Resources/Desktop/org.tolmi.Tolmi1.xml describes it.
/// While another program owns the name, nobody reaches this one by it; once that has gone, it is reached.
class DBusRemoteControl final : public QDBusVirtualObject, public RemoteControl {
    Q_OBJECT

public:
    explicit DBusRemoteControl(const QDBusConnection &bus = QDBusConnection::sessionBus());

    Availability serve(RemoteCommands &commands) override;
    void announce() override;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private Q_SLOTS:
    void ownerChanged(const QDBusMessage &signal);

private:
    void requestName();
    QDBusMessage answer(const QDBusMessage &message);
    QDBusMessage propertyAnswer(const QDBusMessage &message) const;
    QDBusMessage commandAnswer(const QDBusMessage &message, RemoteCommand command);
    QDBusMessage methodsAnswer(const QDBusMessage &message) const;
    QVariantMap properties() const;
    void watch(const QString &caller);
    void leave(const QString &caller);

    QDBusConnection m_bus;
    RemoteCommands *m_commands = nullptr;
    QVariantMap m_announced;
    /// Who has pressed the key and has not ended since.
    QSet<QString> m_watched;
};
