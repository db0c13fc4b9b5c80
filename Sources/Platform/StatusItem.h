#pragma once

#include "Platform/Availability.h"

#include <QRect>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

/// An entry of the status item's menu.
struct StatusMenuEntry {
    QString title;
    /// An entry without an action is a label.
    std::function<void()> action;
};

/// The program's icon in the system tray. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Whether the desktop has a system tray.
    virtual Availability availability() = 0;

    /// Sets the tool tip, which screen readers use as well.
    virtual void setToolTip(const QString &text) = 0;

    /// Replaces the menu.
    virtual void setMenu(const std::vector<StatusMenuEntry> &entries) = 0;

    /// Calls `observer` each time the user activates the item; replaces an earlier observer. Some desktops
    /// open the menu instead.
    virtual void setActivationObserver(std::function<void()> observer) = 0;

    /// The item's screen geometry; absent if the desktop does not report it.
    virtual std::optional<QRect> geometry() = 0;

    /// Shows a notification.
    virtual void showMessage(const QString &title, const QString &text) = 0;
};
