#include "TolmiApp/LevelRing.h"

#include "TolmiApp/MeterGeometry.h"

#include <QPainter>

#include <cmath>

void LevelRing::paint(QPainter &painter) const {
    const MeterGeometry::RingStyle &style = isOrb() ? MeterGeometry::orbRing : MeterGeometry::overlayRing;
    painter.translate(boundingRect().center());
    for (const MeterGeometry::RingBar &bar : MeterGeometry::ringBars(style, level(), seconds())) {
        const QPointF direction(std::cos(bar.angle), std::sin(bar.angle));
        const float shade = float(bar.shade);
        painter.setPen(QPen(QColor::fromRgbF(shade, shade, shade, float(bar.alpha)), style.barWidth,
            Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(direction * style.innerRadius, direction * (style.innerRadius + bar.length));
    }
}
