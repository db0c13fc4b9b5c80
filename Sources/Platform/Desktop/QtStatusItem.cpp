#include "Platform/Desktop/QtStatusItem.h"

QtStatusItem::QtStatusItem(const QIcon &icon)
    : m_icon(icon) {
    m_icon.setContextMenu(&m_menu);
    QObject::connect(
        &m_icon, &QSystemTrayIcon::activated, &m_icon, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger && m_activated)
                m_activated();
        });
    m_icon.show();
}

Availability QtStatusItem::availability() {
    if (QSystemTrayIcon::isSystemTrayAvailable())
        return Availability::available();
    return Availability::unavailable(QStringLiteral("this desktop has no system tray"));
}

void QtStatusItem::setToolTip(const QString &text) {
    m_icon.setToolTip(text);
}

void QtStatusItem::setMenu(const std::vector<StatusMenuEntry> &entries) {
    m_menu.clear();
    for (const StatusMenuEntry &entry : entries) {
        QAction *line = m_menu.addAction(entry.title);
        line->setEnabled(bool(entry.action));
        QObject::connect(line, &QAction::triggered, line, [action = entry.action] { action(); });
    }
}

void QtStatusItem::setActivationObserver(std::function<void()> observer) {
    m_activated = std::move(observer);
}

std::optional<QRect> QtStatusItem::geometry() {
    const QRect geometry = m_icon.geometry();
    return geometry.isEmpty() ? std::nullopt : std::optional(geometry);
}

void QtStatusItem::showMessage(const QString &title, const QString &text) {
    m_icon.showMessage(title, text);
}
