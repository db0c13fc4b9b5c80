#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// The eight spokes of a busy indicator: the brightest one has a fading tail.
class Spokes : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(QColor, color, setColor, Qt::white)
    /// The brightest spoke, 0 to 7; 0 points up, increasing clockwise.
    TOLMI_PICTURE_PROPERTY(int, phase, setPhase, 0)
    /// Side of the square that they fill; the whole of the item unless it is given.
    TOLMI_PICTURE_PROPERTY(double, side, setSide, 0)
    /// Standard deviation of a blur; blurred ones, with room around them, are the shadow of sharp ones.
    TOLMI_PICTURE_PROPERTY(double, blur, setBlur, 0)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void paintSpokes(QPainter &painter) const;
};
