#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>
#include <QPointF>

/// The rounded rectangle under a control or a panel: a material, a gradient over it, and up to three edges. A
/// colour that is transparent leaves its part out.
class Plate : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(double, radius, setRadius, 12)
    TOLMI_PICTURE_PROPERTY(QColor, material, setMaterial, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, fill, setFill, Qt::transparent)
    /// Where the gradient ends; the same as `fill` unless it is given.
    TOLMI_PICTURE_PROPERTY(QColor, endFill, setEndFill, QColor())
    /// Where on the plate the gradient that starts in the upper left corner ends, in parts of its width and
    /// height: (0, 1) goes straight down.
    TOLMI_PICTURE_PROPERTY(QPointF, gradientEnd, setGradientEnd, QPointF(0, 1))
    /// One pixel wide, along the edge.
    TOLMI_PICTURE_PROPERTY(QColor, border, setBorder, Qt::transparent)
    /// A hair inside the border.
    TOLMI_PICTURE_PROPERTY(QColor, hairline, setHairline, Qt::transparent)
    /// A line at some distance inside the border that fades on its way down.
    TOLMI_PICTURE_PROPERTY(QColor, highlight, setHighlight, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(double, highlightInset, setHighlightInset, 1.5)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void drawEdge(QPainter &painter, double inset, double edgeWidth, const QBrush &brush) const;
};
