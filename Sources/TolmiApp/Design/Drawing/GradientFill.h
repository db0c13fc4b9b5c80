#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// An opaque gradient from top to bottom with a noise below one level: between two nearly equal colours a
/// plain one shows steps.
class GradientFill : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(QColor, topColor, setTopColor, Qt::white)
    TOLMI_PICTURE_PROPERTY(QColor, bottomColor, setBottomColor, Qt::black)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;
};
