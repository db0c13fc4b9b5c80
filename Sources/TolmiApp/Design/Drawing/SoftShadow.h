#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// The shadow around a plate that fills the same rectangle. It reaches out over its item and is cut out under
/// the plate, so that it never darkens what shines through a translucent one.
class SoftShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Radius of the plate's corners.
    TOLMI_PICTURE_PROPERTY(double, radius, setRadius, 12)
    /// Standard deviation of the blur.
    TOLMI_PICTURE_PROPERTY(double, sigma, setSigma, 14)
    /// How far down the shadow lies.
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
    /// How far the shadow reaches out of the plate.
    double margin() const;
    /// From the outer edge of the shadow to where every line across looks the same.
    double corner() const;
    QImage patch(QSizeF plateSize, double devicePixelRatio) const;

    bool m_isStale = true;
};
