#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/LoginSession.h"
#include "Platform/SessionLock.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <vector>

class QDBusMessage;

/// What the login manager and the screen savers tell over the message buses. They are asked without waiting,
/// at the start and whenever one of them tells of a change. What is told then counts for nothing by itself:
/// on the bus of the system anybody may speak.
class DBusSessionLock final : public QObject, public SessionLock, public LoginSession {
    Q_OBJECT

public:
    using Connect = QDBusConnection (*)();

    /// `connectToSystemBus` may block; it runs on a separate thread.
    explicit DBusSessionLock(const QDBusConnection &sessionBus = QDBusConnection::sessionBus(),
        Connect connectToSystemBus = &systemBus);

    bool isLocked() override;
    std::optional<double> age() const override;

private Q_SLOTS:
    void ask();

private:
    /// A service that knows the state, and its latest reply.
    struct Source {
        QDBusConnection bus;
        /// Creates the query; each message can be sent only once.
        QDBusMessage (*question)();
        bool isLocked = false;
    };

    static QDBusConnection systemBus();

    void listenOnSessionBus(QDBusConnection bus);
    void listenOnSystemBus(QDBusConnection bus);
    void ask(std::size_t source);
    void askForLogin(QDBusConnection bus);

    std::vector<Source> m_sources;
    /// When the user logged in, on the steady clock.
    std::optional<std::chrono::microseconds> m_login;
    SerialQueue m_connecting { QStringLiteral("Tolmi.DBusSessionLock") };
};
