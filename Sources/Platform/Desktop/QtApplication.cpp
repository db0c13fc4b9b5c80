#include "Platform/Desktop/QtApplication.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace {
QPalette darkPalette() {
    const QColor window(0x14, 0x14, 0x17);
    const QColor base(0x0f, 0x0f, 0x12);
    const QColor text(0xf7, 0xf7, 0xfa);
    const QColor highlight(0xd6, 0xd6, 0xdb);
    QPalette palette(
        text, window, window.lighter(160), window.darker(160), window.lighter(130), text, text, base, window);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, base);
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText })
        palette.setColor(QPalette::Disabled, role, text.darker(180));
    return palette;
}

/// The visible ordinary windows, without overlays, menus and tool tips.
QWindowList shownWindows() {
    QWindowList windows = QGuiApplication::topLevelWindows();
    windows.removeIf(
        [](const QWindow *window) { return window->type() != Qt::Window || !window->isVisible(); });
    return windows;
}
} // namespace

QtApplication::QtApplication(const DesktopLook &look)
    : m_look(look) {
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            Q_EMIT didBecomeActive();
    });
    connect(&look, &DesktopLook::changed, this, [this] { applyAppearance(); });
}

void QtApplication::setAppearance(std::optional<Appearance> appearance) {
    m_appearance = appearance;
    applyAppearance();
}

void QtApplication::applyAppearance() {
    const std::optional<Appearance> shown = m_appearance ? m_appearance : m_look.appearance();
    QApplication::setPalette(
        shown == Appearance::Dark ? darkPalette() : QApplication::style()->standardPalette());
}

void QtApplication::activate() {
    for (QWindow *window : shownWindows())
        bringToFront(*window);
}

void QtApplication::orderFront(const QString &title) {
    const QWindowList windows = shownWindows();
    const auto found = std::ranges::find(windows, title, &QWindow::title);
    if (found != windows.end())
        bringToFront(**found);
}

void QtApplication::bringToFront(QWindow &window) {
    if (window.windowState() == Qt::WindowMinimized)
        window.showNormal();
    window.raise();
    window.requestActivate();
}
