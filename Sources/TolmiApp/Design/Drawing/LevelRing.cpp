#include "TolmiApp/Design/Drawing/LevelRing.h"

#include "TolmiApp/Design/Drawing/MeterGeometry.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {
/// Of the middle of the circle's line at a scale of 1.
constexpr double circleRadius = 22;
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

// Drawn as a gradient, not as a scaled item or a stroked line: QPainter hands those to several threads, and
// waking them costs more than the drawing.
void LevelRing::paintCircle(QPainter &painter) const {
    const double radius = circleRadius * circleScale();
    const double halfWidth = circleLineWidth * circleScale() / 2;
    // Antialiases the edge over one pixel.
    const double halfPixel = 0.5 / painter.device()->devicePixelRatioF();
    const double reach = radius + halfWidth + halfPixel;
    const QColor line = QColor::fromRgbF(1, 1, 1, float(std::min(1.0, circleAlpha())));
    QRadialGradient gradient(QPointF(), reach);
    gradient.setColorAt((radius - halfWidth - halfPixel) / reach, QColor(255, 255, 255, 0));
    gradient.setColorAt((radius - halfWidth + halfPixel) / reach, line);
    gradient.setColorAt((radius + halfWidth - halfPixel) / reach, line);
    gradient.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRectF(-reach, -reach, 2 * reach, 2 * reach), gradient);
}
