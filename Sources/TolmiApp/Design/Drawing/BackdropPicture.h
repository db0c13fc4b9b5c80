#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// The static backdrop of the Studio for renderers without shaders.
class BackdropPicture : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// Colours of the gradient from top left to bottom right.
    TOLMI_PICTURE_PROPERTY(QColor, ink, setInk, Qt::black)
    TOLMI_PICTURE_PROPERTY(QColor, graphite, setGraphite, Qt::darkGray)
    TOLMI_PICTURE_PROPERTY(QColor, slate, setSlate, Qt::gray)
    TOLMI_PICTURE_PROPERTY(QColor, veilStrong, setVeilStrong, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, veilSoft, setVeilSoft, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, sweepStrong, setSweepStrong, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, sweepSoft, setSweepSoft, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, mesh, setMesh, Qt::transparent)
    TOLMI_PICTURE_PROPERTY(QColor, vignette, setVignette, Qt::transparent)
    /// Position of the sweeps, 0 at one end of their motion, 1 at the other.
    TOLMI_PICTURE_PROPERTY(double, drift, setDrift, 0)
    TOLMI_PICTURE_PROPERTY(double, cornerRadius, setCornerRadius, 0)

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter) const override;

private:
    void drawBase(QPainter &painter) const;
    void drawSweeps(QPainter &painter) const;
    void drawMesh(QPainter &painter) const;
    void drawVignette(QPainter &painter) const;
    void cutCorners(QPainter &painter) const;
};
