#include "Platform/Desktop/QtStatusItem.h"

#include "Platform/StatusTray.h"

#include <algorithm>

QtStatusItem::QtStatusItem(const QIcon &icon, const std::vector<StatusTray *> &trays)
    : m_trays(trays)
    , m_icon(icon) {
    for (StatusTray *tray : trays)
        QObject::connect(tray, &StatusTray::appeared, &m_context, [this] { appear(); });
    availability();
}

void QtStatusItem::appear() {
    if (m_item)
        return;
    m_item.emplace(m_icon);
    m_item->setToolTip(m_toolTip);
    m_item->setContextMenu(&m_menu);
    QObject::connect(
        &*m_item, &QSystemTrayIcon::activated, &m_context, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger && m_activated)
                m_activated();
        });
    m_item->show();
}

Availability QtStatusItem::availability() {
    if (!std::ranges::any_of(m_trays, &StatusTray::isThere))
        return Availability::unavailable(QStringLiteral("this desktop has no system tray"));
    // A tray may tell whoever asks before it tells of itself.
    appear();
    return Availability::available();
}

void QtStatusItem::setIcon(const QIcon &icon) {
    m_icon = icon;
    if (m_item)
        m_item->setIcon(icon);
}

void QtStatusItem::setToolTip(const QString &text) {
    m_toolTip = text;
    if (m_item)
        m_item->setToolTip(text);
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
    const QRect geometry = m_item ? m_item->geometry() : QRect();
    return geometry.isEmpty() ? std::nullopt : std::optional(geometry);
}

void QtStatusItem::showMessage(const QString &title, const QString &text) {
    if (m_item)
        m_item->showMessage(title, text);
}
