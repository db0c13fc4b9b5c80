#include "Platform/Desktop/QtApplication.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

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
} // namespace

QtApplication::QtApplication() {
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            Q_EMIT didBecomeActive();
    });
}

void QtApplication::setAppearance(std::optional<Appearance> appearance) {
    QApplication::setPalette(
        appearance == Appearance::Dark ? darkPalette() : QApplication::style()->standardPalette());
}
