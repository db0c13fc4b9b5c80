#pragma once

#include "desktop-driver/AccessibleElement.h"

#include <vector>

/// The eyes of a user who cannot see: what a running program says of its windows on the accessibility bus.
class AccessibleProgram {
public:
    /// Turns accessibility on for the programs of this desktop, as a screen reader does at its start.
    explicit AccessibleProgram(qint64 processId);

    /// The program as if it had nothing but what this element contains: a dialog, for one, which keeps the
    /// user from what lies under it.
    AccessibleProgram within(const AccessibleElement &element) const;

    /// Everything in the program's windows that is not hidden, each element before what it contains.
    std::vector<AccessibleElement> elements() const;

    /// The first element that shows with this role and name, or any name when it is empty; awaited for at
    /// most `seconds`.
    std::optional<AccessibleElement> find(
        const QString &role, const QString &name, double seconds = 20) const;

    /// Why an element was not found: the roles and names of all that shows, a line for each.
    QString described() const;

private:
    std::optional<AccessibleElement> root() const;

    QDBusConnection m_bus;
    qint64 m_processId;
    std::optional<AccessibleElement> m_limit;
};
