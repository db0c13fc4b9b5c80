#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"
#include "TolmiApp/Design/Drawing/SymbolPaths.h"

#include <QColor>

/// A symbol by name. Its implicit width and height are `size`.
class Symbol : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// One of SymbolPaths::names(); an empty name draws nothing, an unknown one is reported as a bug.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// Side of the symbol's square.
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
    TOLMI_PICTURE_PROPERTY(QColor, color, setColor, Qt::white)
    /// Colour at the bottom of a gradient; defaults to `color`.
    TOLMI_PICTURE_PROPERTY(QColor, endColor, setEndColor, QColor())
    /// Line width in grid units.
    TOLMI_PICTURE_PROPERTY(double, stroke, setStroke, SymbolPaths::regularStroke)
    /// Standard deviation of a blur in logical pixels. A blurred symbol exceeds its square and serves as the
    /// shadow or glow of a sharp one.
    TOLMI_PICTURE_PROPERTY(double, blur, setBlur, 0)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

    const QString &name() const { return m_name; }
    void setName(const QString &name);
    double size() const { return m_size; }
    void setSize(double size);

Q_SIGNALS:
    void nameChanged();
    void sizeChanged();

protected:
    void paint(QPainter &painter) const override;

private:
    QImage sharpImage(double devicePixelRatio) const;
    QImage softImage(double devicePixelRatio) const;

    QString m_name;
    double m_size = 16;
};
