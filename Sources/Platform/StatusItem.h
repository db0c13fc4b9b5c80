#pragma once

#include "Platform/Availability.h"

#include <QString>

#include <functional>
#include <vector>

/// One line of the status item's menu.
struct StatusMenuEntry {
    QString title;
    /// An entry without an action is only read.
    std::function<void()> action;
};

/// The program's permanent sign in the desktop's panel. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Whether the desktop has a place for it.
    virtual Availability availability() = 0;

    /// The words that the pointer and screen readers find on the item.
    virtual void setToolTip(const QString &text) = 0;

    /// Replaces the menu; later entries stand lower.
    virtual void setMenu(const std::vector<StatusMenuEntry> &entries) = 0;

    /// Shows a short message near the item, as the desktop shows notifications.
    virtual void showMessage(const QString &title, const QString &text) = 0;
};
