#include "TolmiApp/Design/Drawing/Spokes.h"

#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <QPainter>

#include <array>

void Spokes::paint(QPainter &painter) const {
    if (blur() <= 0) {
        paintSpokes(painter);
        return;
    }
    const double ratio = painter.device()->devicePixelRatioF();
    QImage canvas(qCeil(width() * ratio), qCeil(height() * ratio), QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    {
        QPainter sharp(&canvas);
        sharp.setRenderHint(QPainter::Antialiasing);
        paintSpokes(sharp);
    }
    SoftAlpha alpha(canvas);
    alpha.blur(blur() * ratio);
    QImage soft = alpha.image(color());
    soft.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(), soft);
}

void Spokes::paintSpokes(QPainter &painter) const {
    constexpr std::array<double, 8> tail { 1, 0.82, 0.64, 0.5, 0.38, 0.28, 0.2, 0.14 };
    const double square = side() > 0 ? side() : std::min(width(), height());
    const double thickness = square * 0.125;
    painter.translate(boundingRect().center());
    painter.setPen(QPen(color(), thickness, Qt::SolidLine, Qt::RoundCap));
    for (int spoke = 0; spoke < int(tail.size()); ++spoke) {
        painter.setOpacity(tail[size_t((phase() - spoke + 8) % 8)]);
        painter.drawLine(
            QPointF(0, -square * 0.47 + thickness / 2), QPointF(0, -square * 0.19 - thickness / 2));
        painter.rotate(45);
    }
}
