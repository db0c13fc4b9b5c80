#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// A sphere lit from the top left.
class Sphere : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// Gradient from the highlight to the far edge.
    TOLMI_PICTURE_PROPERTY(QColor, light, setLight, Qt::white)
    TOLMI_PICTURE_PROPERTY(QColor, body, setBody, Qt::gray)
    TOLMI_PICTURE_PROPERTY(QColor, shade, setShade, Qt::black)
    /// A one-pixel line along the edge.
    TOLMI_PICTURE_PROPERTY(QColor, ring, setRing, Qt::transparent)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;
};
