#include "TolmiApp/Design/Drawing/GradientFill.h"

#include <QPainter>
#include <QRandomGenerator>

void GradientFill::paint(QPainter &painter) const {
    const QImage &target = *static_cast<const QImage *>(painter.device());
    QImage image(target.size(), QImage::Format_RGB32);
    // Fixed seed, so that redrawing gives the same picture.
    QRandomGenerator grains(1);
    for (int y = 0; y < image.height(); ++y) {
        const float part = float(y) / float(std::max(1, image.height() - 1));
        const auto mixed = [part](float top, float bottom) { return (top + (bottom - top) * part) * 255; };
        const float red = mixed(topColor().redF(), bottomColor().redF());
        const float green = mixed(topColor().greenF(), bottomColor().greenF());
        const float blue = mixed(topColor().blueF(), bottomColor().blueF());
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const float grain = float(grains.generateDouble());
            line[x] = qRgb(int(red + grain), int(green + grain), int(blue + grain));
        }
    }
    image.setDevicePixelRatio(target.devicePixelRatio());
    painter.drawImage(QPointF(), image);
}
