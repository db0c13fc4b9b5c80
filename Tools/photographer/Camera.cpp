#include "photographer/Camera.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

Camera::Camera(const QRect &part, int perSecond, Take take) {
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(
        &m_timer, &QTimer::timeout, &m_timer, [part, take = std::move(take)] { take(picture(part)); });
    m_timer.start(1000 / perSecond);
}

QImage Camera::picture(const QRect &part) {
    constexpr WId wholeScreen = 0;
    return QGuiApplication::primaryScreen()
        ->grabWindow(wholeScreen, part.x(), part.y(), part.width(), part.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB888);
}
