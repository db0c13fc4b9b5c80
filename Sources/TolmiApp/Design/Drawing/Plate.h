#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>
#include <QPointF>

/// The rounded background of a control or panel: a material, a gradient over it, and up to three edges. Parts
/// with a transparent colour are not drawn.
class Plate : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(double, radius, setRadius, 12)
    TOLMI_PICTURE_PROPERTY(QColor, material, setMaterial, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, fill, setFill, Qt::transparent)
    /// Last colour of the gradient; defaults to `fill`.
    TOLMI_PICTURE_PROPERTY(QColor, endFill, setEndFill, QColor())
    /// End point of the gradient, which starts at the top left, as fractions of width and height: (0, 1) is
    /// vertical.
    TOLMI_PICTURE_PROPERTY(QPointF, gradientEnd, setGradientEnd, QPointF(0, 1))
    /// A one-pixel line along the edge.
    TOLMI_PICTURE_PROPERTY(QColor, border, setBorder, Qt::transparent)
    /// A hairline inside the border.
    TOLMI_PICTURE_PROPERTY(QColor, hairline, setHairline, Qt::transparent)
    /// A line further inside the border that fades downwards.
    TOLMI_PICTURE_PROPERTY(QColor, highlight, setHighlight, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(double, highlightInset, setHighlightInset, 1.5)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void drawEdge(QPainter &painter, double inset, double edgeWidth, const QBrush &brush) const;
};
