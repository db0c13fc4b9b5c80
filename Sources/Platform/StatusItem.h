#pragma once

#include "Platform/Availability.h"

#include <QRect>
#include <QString>

#include <functional>
#include <optional>
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

    /// Calls `observer` each time the user presses the item itself; replaces an earlier observer. Some
    /// desktops never tell and open the menu instead.
    virtual void setActivationObserver(std::function<void()> observer) = 0;

    /// Where the item stands on the screen; absent where the desktop does not tell.
    virtual std::optional<QRect> geometry() = 0;

    /// Shows a short message near the item, as the desktop shows notifications.
    virtual void showMessage(const QString &title, const QString &text) = 0;
};
