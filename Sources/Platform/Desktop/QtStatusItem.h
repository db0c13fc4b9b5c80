#pragma once

#include "Platform/StatusItem.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <optional>

class StatusTray;

/// A status item in the system tray, as soon as there is one.
class QtStatusItem final : public StatusItem {
public:
    /// The trays outlive the item.
    QtStatusItem(const QIcon &icon, const std::vector<StatusTray *> &trays);

    void setIcon(const QIcon &icon);

    Availability availability() override;
    void setToolTip(const QString &text) override;
    void setMenu(const std::vector<StatusMenuEntry> &entries) override;
    void setActivationObserver(std::function<void()> observer) override;
    std::optional<QRect> geometry() override;
    void showMessage(const QString &title, const QString &text) override;

private:
    void appear();

    const std::vector<StatusTray *> m_trays;
    QIcon m_icon;
    QString m_toolTip;
    std::function<void()> m_activated;
    // The menu outlives the item in the tray that shows it.
    QMenu m_menu;
    /// Absent until there is a tray: the toolkit asks once in its life whether there is one on the bus, and
    /// waits for the answer.
    std::optional<QSystemTrayIcon> m_item;
    QObject m_context;
};
