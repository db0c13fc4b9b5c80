#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QRect>
#include <QString>
#include <QVariant>

#include <optional>

/// One element of a program's windows as a screen reader is told of it. Role, name and states are those of
/// the moment when it was found; what is asked beyond them is answered as it is now.
class AccessibleElement {
public:
    /// Numbered as on the accessibility bus.
    enum class State {
        Active = 1,
        Checked = 4,
        Editable = 7,
        Focusable = 11,
        Focused = 12,
        Selected = 23,
        Showing = 25,
    };

    /// Where an element is on the accessibility bus.
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

    /// On the screen, in pixels; null when the element has no place.
    QRect rectangle() const;
    /// What stands in a field; empty for elements without a text.
    QString text() const;
    /// Of a slider and the like.
    std::optional<double> value() const;
    /// Names of what a screen reader can have the element do.
    QStringList actions() const;
    /// Has the element do one of its actions, without keyboard or mouse; false when it has none of that name.
    bool act(const QString &action) const;
    /// The same element with the role, name and states that it has now.
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
