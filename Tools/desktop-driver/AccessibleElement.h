#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QRect>
#include <QString>
#include <QVariant>

#include <optional>

/// One element of a program's windows on the accessibility bus. Role, name and states are a snapshot from
/// when it was found; everything else is queried live.
class AccessibleElement {
public:
    /// Numbered as in AT-SPI.
    enum class State {
        Active = 1,
        Checked = 4,
        Editable = 7,
        Focusable = 11,
        Focused = 12,
        Selected = 23,
        Showing = 25,
    };

    /// The address of an element on the accessibility bus.
    struct Address {
        QString service;
        QString path;

        bool operator==(const Address &) const = default;
    };

    AccessibleElement(QDBusConnection bus, Address address);

    /// "push button", "check box", "combo box" and so on.
    QString role() const { return m_role; }
    QString name() const { return m_name; }
    bool is(State state) const { return (m_states >> unsigned(state)) & 1; }

    /// Screen geometry in pixels; null if the element has none.
    QRect rectangle() const;
    /// The text of a field; empty for elements without text.
    QString text() const;
    /// The value of a slider or similar.
    std::optional<double> value() const;
    /// Names of the element's accessible actions.
    QStringList actions() const;
    /// Triggers an action without keyboard or mouse; false if there is none of that name.
    bool act(const QString &action) const;
    /// The same element with current role, name and states.
    AccessibleElement now() const;

    const Address &address() const { return m_address; }
    /// Role and name, for messages.
    QString described() const;

private:
    friend class AccessibleTree;

    QDBusPendingCall call(
        const QString &interface, const QString &method, const QVariantList &arguments = {}) const;
    QDBusPendingCall property(const QString &interface, const QString &name) const;

    QDBusConnection m_bus;
    Address m_address;
    QString m_role;
    QString m_name;
    quint64 m_states = 0;
};
