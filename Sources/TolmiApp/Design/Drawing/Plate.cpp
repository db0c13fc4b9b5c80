#include "TolmiApp/Design/Drawing/Plate.h"

#include <QPainter>

#include <algorithm>

void Plate::paint(QPainter &painter) const {
    const QRectF area = boundingRect();
    painter.setPen(Qt::NoPen);
    if (material().alpha() > 0) {
        painter.setBrush(material());
        painter.drawRoundedRect(area, radius(), radius());
    }
    QLinearGradient gradient(0, 0, area.width() * gradientEnd().x(), area.height() * gradientEnd().y());
    gradient.setColorAt(0, fill());
    gradient.setColorAt(1, endFill().isValid() ? endFill() : fill());
    painter.setBrush(gradient);
    painter.drawRoundedRect(area, radius(), radius());

    drawEdge(painter, 1, 0.75, hairline());
    drawEdge(painter, 0, 1, border());
    if (highlight().alpha() > 0) {
        QColor faded = highlight();
        faded.setAlphaF(highlight().alphaF() * 0.12F);
        QLinearGradient fade(0, 0, 0, area.height());
        fade.setColorAt(0, highlight());
        fade.setColorAt(0.55, faded);
        drawEdge(painter, highlightInset(), 1, fade);
    }
}

void Plate::drawEdge(QPainter &painter, double inset, double edgeWidth, const QBrush &brush) const {
    const double middle = inset + edgeWidth / 2;
    const double corner = std::max(0.0, radius() - middle);
    painter.setPen(QPen(brush, edgeWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(boundingRect().adjusted(middle, middle, -middle, -middle), corner, corner);
}
