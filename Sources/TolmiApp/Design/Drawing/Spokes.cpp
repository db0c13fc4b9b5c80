#include "TolmiApp/Design/Drawing/Spokes.h"

#include <QPainter>

#include <array>

void Spokes::paint(QPainter &painter) const {
    constexpr std::array<double, 8> tail { 1, 0.82, 0.64, 0.5, 0.38, 0.28, 0.2, 0.14 };
    const double side = std::min(width(), height());
    const double thickness = side * 0.125;
    painter.translate(boundingRect().center());
    painter.setPen(QPen(color(), thickness, Qt::SolidLine, Qt::RoundCap));
    for (int spoke = 0; spoke < int(tail.size()); ++spoke) {
        painter.setOpacity(tail[size_t((phase() - spoke + 8) % 8)]);
        painter.drawLine(QPointF(0, -side * 0.47 + thickness / 2), QPointF(0, -side * 0.19 - thickness / 2));
        painter.rotate(45);
    }
}
