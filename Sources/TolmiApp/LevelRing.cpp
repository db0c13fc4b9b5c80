#include "TolmiApp/LevelRing.h"

#include "TolmiApp/MeterGeometry.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {
/// Of the middle of the circle's line at a scale of 1, where the circle with its line fills 44 pixels.
constexpr double circleRadius = 21;
constexpr double circleLineWidth = 2;
} // namespace

void LevelRing::paint(QPainter &painter) const {
    painter.translate(boundingRect().center());
    paintBars(painter);
    if (circleAlpha() > 0)
        paintCircle(painter);
}

void LevelRing::paintBars(QPainter &painter) const {
    const MeterGeometry::RingStyle &style = isOrb() ? MeterGeometry::orbRing : MeterGeometry::overlayRing;
    for (const MeterGeometry::RingBar &bar : MeterGeometry::ringBars(style, level(), seconds())) {
        const QPointF direction(std::cos(bar.angle), std::sin(bar.angle));
        const float shade = float(bar.shade);
        painter.setPen(QPen(QColor::fromRgbF(shade, shade, shade, float(bar.alpha)), style.barWidth,
            Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(direction * style.innerRadius, direction * (style.innerRadius + bar.length));
    }
}

// Here and not as an item with a scale: the renderer hands what is scaled to several threads, whose waking
// costs more than all the drawing.
void LevelRing::paintCircle(QPainter &painter) const {
    painter.setPen(QPen(
        QColor::fromRgbF(1, 1, 1, float(std::min(1.0, circleAlpha()))), circleLineWidth * circleScale()));
    painter.drawEllipse(QPointF(), circleRadius * circleScale(), circleRadius * circleScale());
}
