#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/SessionLock.h"

#include <QDBusConnection>
#include <QObject>

#include <vector>

class QDBusMessage;

/// The lock state that the login manager and the screen savers report over D-Bus. They are queried
/// asynchronously, at start and at each change signal. The content of a signal is not trusted, because anyone
/// can send one on the system bus.
class DBusSessionLock final : public QObject, public SessionLock {
    Q_OBJECT

public:
    using Connect = QDBusConnection (*)();

    /// `connectToSystemBus` may block; it runs on a separate thread.
    explicit DBusSessionLock(const QDBusConnection &sessionBus = QDBusConnection::sessionBus(),
        Connect connectToSystemBus = &systemBus);

    bool isLocked() override;

private Q_SLOTS:
    void query();

private:
    /// A service that knows the state, and its latest reply.
    struct Source {
        QDBusConnection bus;
        /// Creates the query; each message can be sent only once.
        QDBusMessage (*makeQuery)();
        bool isLocked = false;
    };

    static QDBusConnection systemBus();

    void listenOnSessionBus(QDBusConnection bus);
    void listenOnSystemBus(QDBusConnection bus);
    void query(std::size_t source);

    std::vector<Source> m_sources;
    SerialQueue m_connecting { QStringLiteral("Tolmi.DBusSessionLock") };
};
