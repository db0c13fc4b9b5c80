#pragma once

#include "Platform/StatusItem.h"

#include <QMenu>
#include <QSystemTrayIcon>

/// A status item in the system tray.
class QtStatusItem final : public StatusItem {
public:
    explicit QtStatusItem(const QIcon &icon);

    Availability availability() override;
    void setToolTip(const QString &text) override;
    void setMenu(const std::vector<StatusMenuEntry> &entries) override;
    void setActivationObserver(std::function<void()> observer) override;
    std::optional<QRect> geometry() override;
    void showMessage(const QString &title, const QString &text) override;

private:
    std::function<void()> m_activated;
    // The menu outlives the tray icon that shows it.
    QMenu m_menu;
    QSystemTrayIcon m_icon;
};
