#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// Eight spokes, one of which is the brightest, with a tail behind it.
class Spokes : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(QColor, color, setColor, Qt::white)
    /// The brightest spoke, 0 to 7; 0 points up, and the order runs clockwise.
    TOLMI_PICTURE_PROPERTY(int, phase, setPhase, 0)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;
};
