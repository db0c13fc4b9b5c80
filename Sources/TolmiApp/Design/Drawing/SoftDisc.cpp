#include "TolmiApp/Design/Drawing/SoftDisc.h"

#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

double SoftDisc::alphaAt(double distance) const {
    if (distance >= 1)
        return 0;
    if (distance < middle())
        return centerAlpha() + (middleAlpha() - centerAlpha()) * distance / middle();
    return middleAlpha() + (edgeAlpha() - middleAlpha()) * (distance - middle()) / (1 - middle());
}

void SoftDisc::paint(QPainter &painter) const {
    const double ratio = painter.device()->devicePixelRatioF();
    SoftAlpha alpha(QSize(qCeil(width() * ratio), qCeil(height() * ratio)));
    const double centerX = alpha.size().width() / 2.0;
    const double centerY = alpha.size().height() / 2.0;
    const auto distanceFromCenter
        = [&](int x, int y) { return std::hypot(x + 0.5 - centerX, y + 0.5 - centerY); };
    const auto forEachPixel = [&](auto change) {
        for (int y = 0; y < alpha.size().height(); ++y) {
            for (int x = 0; x < alpha.size().width(); ++x)
                alpha.at(x, y) = float(change(alpha.at(x, y), distanceFromCenter(x, y)));
        }
    };
    const double radius = diameter() / 2 * ratio;
    forEachPixel([&](float, double distance) { return alphaAt(distance / radius); });
    alpha.blur(sigma() * ratio);
    const double rim = std::min(centerX, centerY);
    forEachPixel([&](float value, double distance) {
        const double inside = std::clamp((rim - distance) / (0.12 * rim), 0.0, 1.0);
        return value * inside * inside * (3 - 2 * inside);
    });
    QImage image = alpha.image(color());
    image.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(), image);
}
