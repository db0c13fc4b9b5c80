#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// A blurred radial gradient for halos, glows and soft shadows. It fades out before the edge of its item, so
/// that a small window does not clip it visibly.
class SoftDisc : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(double, diameter, setDiameter, 120)
    /// Standard deviation of the blur.
    TOLMI_PICTURE_PROPERTY(double, sigma, setSigma, 12)
    TOLMI_PICTURE_PROPERTY(QColor, color, setColor, Qt::white)
    /// Opacities at the centre, at `middle` of the radius and at the edge of the disc.
    TOLMI_PICTURE_PROPERTY(double, centerAlpha, setCenterAlpha, 1)
    TOLMI_PICTURE_PROPERTY(double, middleAlpha, setMiddleAlpha, 0.5)
    TOLMI_PICTURE_PROPERTY(double, edgeAlpha, setEdgeAlpha, 0)
    TOLMI_PICTURE_PROPERTY(double, middle, setMiddle, 0.5)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    /// Opacity before the blur at a distance from the centre, relative to the radius.
    double alphaAt(double distance) const;
};
