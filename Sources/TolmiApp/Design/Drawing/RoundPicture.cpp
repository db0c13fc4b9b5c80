#include "TolmiApp/Design/Drawing/RoundPicture.h"

#include <QBrush>
#include <QPainter>

#include <algorithm>

void RoundPicture::paint(QPainter &painter) const {
    if (isEmpty())
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    const int side = int(std::min(width(), height()) * ratio);
    // Smooth scaling averages all pixels; QPainter would skip most pixels of a large picture.
    const QImage scaled
        = image().scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    QBrush brush(scaled.copy((scaled.width() - side) / 2, (scaled.height() - side) / 2, side, side));
    brush.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawEllipse(QRectF(0, 0, side / ratio, side / ratio));
}
