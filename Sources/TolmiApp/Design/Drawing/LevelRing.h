#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

/// The bars that stand around a centre and rise with the voice.
class LevelRing : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// Level of the voice, 0 to 1.
    TOLMI_PICTURE_PROPERTY(double, level, setLevel, 0)
    /// The time of the picture; the wave runs round the ring with it.
    TOLMI_PICTURE_PROPERTY(double, seconds, setSeconds, 0)
    /// The ring of the voice orb rather than that of the overlay.
    TOLMI_PICTURE_PROPERTY(bool, isOrb, setIsOrb, false)
    /// Size of the circle inside the bars against that of the state's disc.
    TOLMI_PICTURE_PROPERTY(double, circleScale, setCircleScale, 1)
    /// Opacity of that circle, 0 to 1; at 0 there is none.
    TOLMI_PICTURE_PROPERTY(double, circleAlpha, setCircleAlpha, 0)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void paintBars(QPainter &painter) const;
    void paintCircle(QPainter &painter) const;
};
