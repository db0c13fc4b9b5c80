#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

/// A ring of bars that grow with the voice level.
class LevelRing : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// Voice level, 0 to 1.
    TOLMI_PICTURE_PROPERTY(double, level, setLevel, 0)
    /// The time, which moves the wave around the ring.
    TOLMI_PICTURE_PROPERTY(double, seconds, setSeconds, 0)
    /// Whether this is the ring of the voice orb rather than the overlay's.
    TOLMI_PICTURE_PROPERTY(bool, isOrb, setIsOrb, false)
    /// Size of the circle inside the bars relative to the state's disc.
    TOLMI_PICTURE_PROPERTY(double, circleScale, setCircleScale, 1)
    /// Opacity of that circle, 0 to 1; not drawn at 0.
    TOLMI_PICTURE_PROPERTY(double, circleAlpha, setCircleAlpha, 0)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void paintBars(QPainter &painter) const;
    void paintCircle(QPainter &painter) const;
};
