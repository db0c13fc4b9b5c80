#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// The shadow around a plate of the same geometry. It extends beyond its item and is cut out under the plate,
/// so that it does not darken a translucent one.
class SoftShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Radius of the plate's corners.
    TOLMI_PICTURE_PROPERTY(double, radius, setRadius, 12)
    /// Standard deviation of the blur.
    TOLMI_PICTURE_PROPERTY(double, sigma, setSigma, 14)
    /// Vertical offset of the shadow.
    TOLMI_PICTURE_PROPERTY(double, offsetY, setOffsetY, 10)
    TOLMI_PICTURE_PROPERTY(QColor, color, setColor, Qt::black)

public:
    explicit SoftShadow(QQuickItem *parent = nullptr);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void redraw();
    /// How far the shadow extends beyond the plate.
    double margin() const;
    /// Size of a nine-patch corner, from the shadow's outer edge to where it becomes uniform.
    double corner() const;
    QImage patch(QSizeF plateSize, double devicePixelRatio) const;

    bool m_isStale = true;
};
