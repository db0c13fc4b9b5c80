#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// An opaque vertical gradient with dithering, which avoids visible banding between similar colours.
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
