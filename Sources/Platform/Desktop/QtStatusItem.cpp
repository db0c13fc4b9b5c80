#include "Platform/Desktop/QtStatusItem.h"

QtStatusItem::QtStatusItem(const QIcon &icon)
    : m_icon(icon) {
    m_icon.setContextMenu(&m_menu);
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

void QtStatusItem::showMessage(const QString &title, const QString &text) {
    m_icon.showMessage(title, text);
}
