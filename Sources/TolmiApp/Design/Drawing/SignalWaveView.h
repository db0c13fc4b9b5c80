#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QColor>

/// A row of bars that grow with the voice level; a faint ornament while inactive.
class SignalWaveView : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(bool, isActive, setIsActive, false)
    /// Voice level, 0 to 1.
    TOLMI_PICTURE_PROPERTY(double, level, setLevel, 0)
    TOLMI_PICTURE_PROPERTY(QColor, tint, setTint, Qt::white)
    /// The number of bars.
    Q_PROPERTY(int bars READ bars WRITE setBars NOTIFY barsChanged)
    /// Distance between two bars.
    Q_PROPERTY(double spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

public:
    explicit SignalWaveView(QQuickItem *parent = nullptr);

    int bars() const { return m_bars; }
    void setBars(int bars);
    double spacing() const { return m_spacing; }
    void setSpacing(double spacing);

Q_SIGNALS:
    void barsChanged();
    void spacingChanged();

protected:
    void paint(QPainter &painter) const override;

private:
    void resize();

    int m_bars = 28;
    double m_spacing = 4;
};
