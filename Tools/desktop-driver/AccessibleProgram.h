#pragma once

#include "desktop-driver/AccessibleElement.h"

#include <vector>

/// A running program's windows on the accessibility bus, as a screen reader sees them.
class AccessibleProgram {
public:
    /// Enables accessibility for the programs of this desktop, as a starting screen reader does.
    explicit AccessibleProgram(qint64 processId);

    /// The program restricted to the contents of this element, such as a modal dialog.
    AccessibleProgram within(const AccessibleElement &element) const;

    /// All visible elements of the program's windows, parents before children.
    std::vector<AccessibleElement> elements() const;

    /// The first visible element with this role and name (any name if empty); waits at most `seconds`.
    std::optional<AccessibleElement> find(
        const QString &role, const QString &name, double seconds = 20) const;

    /// The roles and names of all visible elements, one per line, for failure messages.
    QString described() const;

private:
    std::optional<AccessibleElement> root() const;

    QDBusConnection m_bus;
    qint64 m_processId;
    std::optional<AccessibleElement> m_limit;
};
