#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QImage>
#include <QObject>
#include <QPoint>
#include <QStringList>

/// The part of a desktop's panel that shows status items over the bus: it takes their registrations, and
/// presses them.
class StatusNotifierHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    StatusNotifierHost();
    ~StatusNotifierHost() override;

    bool hasHost() const {
        ++m_askCount;
        return m_hasHost;
    }
    /// How often somebody has asked for the panel.
    int askCount() const { return m_askCount; }
    /// Has the watcher of items there without a panel that shows them, or the panel come.
    void setHasHost(bool hasHost);
    int protocolVersion() const { return 0; }
    /// The names on the bus of those who registered an item.
    QStringList items() const { return m_items; }

    /// A property of the first item.
    QVariant property(const char *name) const;
    /// The pictures of the first item.
    QList<QImage> images() const;
    /// Presses the first item with the main button. The item learns where, as far as it cares.
    void activate(const QPoint &point);
    /// The lines of the first item's menu, as the bus tells them.
    QStringList menu() const;
    /// Chooses the line of the first item's menu with this label.
    void choose(const QString &label) const;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);
    void RegisterStatusNotifierHost(const QString &) { }

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &service);
    void StatusNotifierHostRegistered();

private:
    struct MenuLine {
        int number = 0;
        QString label;
    };

    QDBusMessage callMenu(const QString &method, const QVariantList &arguments) const;
    QList<MenuLine> menuLines() const;
    static QList<MenuLine> linesIn(const QDBusArgument &layout);

    // Of its own: a call to the connection that makes it would not go over the bus.
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    QStringList m_items;
    bool m_hasHost = true;
    mutable int m_askCount = 0;
};
