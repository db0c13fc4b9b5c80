#include "TolmiApp/Design/Drawing/Sphere.h"

#include <QPainter>

void Sphere::paint(QPainter &painter) const {
    const double diameter = width();
    QRadialGradient gradient(QPointF(0.38, 0.32) * diameter, 0.9 * diameter);
    gradient.setColorAt(0, light());
    gradient.setColorAt(0.5, body());
    gradient.setColorAt(1, shade());
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(boundingRect());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ring(), 1));
    painter.drawEllipse(boundingRect().adjusted(0.5, 0.5, -0.5, -0.5));
}
