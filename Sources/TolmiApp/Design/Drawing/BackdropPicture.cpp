#include "TolmiApp/Design/Drawing/BackdropPicture.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace {

/// The value of a blurred box from -half to half at a distance from its centre.
double blurredBox(double distance, double half, double sigma) {
    const double scale = sigma * std::numbers::sqrt2;
    return 0.5 * (std::erf((distance + half) / scale) - std::erf((distance - half) / scale));
}

/// A blurred and rotated band across the whole width.
struct Sweep {
    QPointF center;
    double degrees;
    double height;
    double sigma;
    QColor color;
};

QColor faded(QColor color, double strength) {
    color.setAlphaF(float(color.alphaF() * strength));
    return color;
}

void drawSweep(QPainter &painter, const Sweep &sweep, double bandWidth) {
    constexpr int stops = 24;
    const double reach = 3 * sweep.sigma;
    const double half = sweep.height / 2 + reach;
    QLinearGradient profile(0, -half, 0, half);
    for (int stop = 0; stop <= stops; ++stop) {
        const double part = double(stop) / stops;
        profile.setColorAt(
            part, faded(sweep.color, blurredBox((2 * part - 1) * half, sweep.height / 2, sweep.sigma)));
    }
    painter.save();
    painter.translate(sweep.center);
    painter.rotate(sweep.degrees);
    const double left = -bandWidth / 2;
    painter.fillRect(QRectF(left + reach, -half, bandWidth - 2 * reach, 2 * half), profile);
    // The ends fade like the sides, drawn in strips.
    const double strip = 2 * reach / stops;
    for (int index = 0; index < stops; ++index) {
        const double x = left - reach + index * strip;
        painter.setOpacity(blurredBox(x + strip / 2, bandWidth / 2, sweep.sigma));
        painter.fillRect(QRectF(x, -half, strip, 2 * half), profile);
        painter.fillRect(QRectF(-x - strip, -half, strip, 2 * half), profile);
    }
    painter.restore();
}

QLinearGradient overItem(QPointF start, QPointF end) {
    QLinearGradient gradient(start, end);
    gradient.setCoordinateMode(QGradient::ObjectMode);
    return gradient;
}

} // namespace

void BackdropPicture::paint(QPainter &painter) const {
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawBase(painter);
    drawSweeps(painter);
    drawMesh(painter);
    drawVignette(painter);
    cutCorners(painter);
}

void BackdropPicture::drawBase(QPainter &painter) const {
    QLinearGradient base = overItem({ 0, 0 }, { 1, 1 });
    base.setColorAt(0, ink());
    base.setColorAt(0.5, graphite());
    base.setColorAt(1, slate());
    painter.fillRect(boundingRect(), base);
    QLinearGradient veil = overItem({ 1, 0 }, { 0, 1 });
    veil.setColorAt(0, veilStrong());
    veil.setColorAt(1, veilSoft());
    // Normal painting of white and black equals the screen and multiply blend modes.
    painter.fillRect(boundingRect(), veil);
}

void BackdropPicture::drawSweeps(QPainter &painter) const {
    const QPointF middle = boundingRect().center();
    drawSweep(painter, { middle + QPointF(440 * drift() - 220, -140), -18, 120, 28, sweepStrong() }, width());
    drawSweep(painter, { middle + QPointF(180 - 360 * drift(), 120 + 60 * drift()), 24, 80, 20, sweepSoft() },
        width());
}

void BackdropPicture::drawMesh(QPainter &painter) const {
    QPainterPath lines;
    constexpr double distance = 18;
    const int count = int(std::floor((width() + height()) / distance)) + 1;
    for (int index = 0; index < count; ++index) {
        const double x = index * distance - height();
        lines.moveTo(x, 0);
        lines.lineTo(x + height(), height());
    }
    painter.setCompositionMode(QPainter::CompositionMode_Overlay);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(lines, QPen(mesh(), 1));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void BackdropPicture::drawVignette(QPainter &painter) const {
    QLinearGradient fall = overItem({ 0, 0.5 }, { 0, 1 });
    fall.setColorAt(0, faded(vignette(), 0));
    fall.setColorAt(1, vignette());
    painter.fillRect(boundingRect(), fall);
}

void BackdropPicture::cutCorners(QPainter &painter) const {
    QPainterPath corners;
    corners.addRect(boundingRect());
    corners.addRoundedRect(boundingRect(), cornerRadius(), cornerRadius());
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(corners, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}
