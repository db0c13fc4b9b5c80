#pragma once

#include "Platform/StatusTray.h"

#include <QDBusConnection>

/// The panel that shows status items over the message bus. It is asked without waiting.
class DBusStatusTray final : public StatusTray {
    Q_OBJECT

public:
    explicit DBusStatusTray(const QDBusConnection &bus = QDBusConnection::sessionBus());

    bool isThere() const override { return m_isThere; }

private Q_SLOTS:
    void ask();

private:
    void take(bool isThere);

    QDBusConnection m_bus;
    bool m_isThere = false;
};
