#include "photographer/Wallpaper.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

Wallpaper::Wallpaper() {
    // Not managed by the window manager, which would add a frame and raise it.
    setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    setGeometry(QGuiApplication::primaryScreen()->geometry());
    show();
    lower();
}

void Wallpaper::setScheme(const QString &scheme) {
    m_scheme = scheme;
    update();
}

void Wallpaper::showKey(QPoint place) {
    m_keyPlace = place;
    update();
}

void Wallpaper::setKeyDown(bool isDown) {
    if (m_isKeyDown == isDown)
        return;
    m_isKeyDown = isDown;
    update();
}

void Wallpaper::paintEvent(QPaintEvent *) {
    const bool isDark = m_scheme == u"dark";
    QLinearGradient slope(0, 0, width(), height());
    slope.setColorAt(0, isDark ? QColor(0x24, 0x2b, 0x3d) : QColor(0xd9, 0xe4, 0xf2));
    slope.setColorAt(0.55, isDark ? QColor(0x3a, 0x33, 0x50) : QColor(0xec, 0xe6, 0xf4));
    slope.setColorAt(1, isDark ? QColor(0x1a, 0x1d, 0x29) : QColor(0xf6, 0xee, 0xe6));
    QPainter painter(this);
    painter.fillRect(QRect(QPoint(), size()), slope);
    if (m_keyPlace)
        paintKey(painter);
}

void Wallpaper::paintKey(QPainter &painter) const {
    QRect key(0, 0, 92, 44);
    key.moveCenter(*m_keyPlace + QPoint(0, m_isKeyDown ? 3 : 0));
    const bool isDark = m_scheme == u"dark";
    const QColor ink = isDark ? Qt::white : QColor(0x20, 0x24, 0x30);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, m_isKeyDown ? 60 : 110));
    painter.drawRoundedRect(key.translated(0, m_isKeyDown ? 1 : 4), 9, 9);
    painter.setBrush(m_isKeyDown ? ink : isDark ? QColor(0x4b, 0x4e, 0x5e) : QColor(0xfb, 0xfb, 0xfd));
    painter.drawRoundedRect(key, 9, 9);
    painter.setPen(!m_isKeyDown ? ink : isDark ? QColor(0x20, 0x24, 0x30) : QColor(Qt::white));
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(15);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.drawText(key, Qt::AlignCenter, QStringLiteral("Right Alt"));
}
