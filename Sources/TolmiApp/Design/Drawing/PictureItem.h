#pragma once

#include <QImage>
#include <QQuickItem>

class QPainter;

/// An item that QPainter draws into a texture when one of its properties changes. It looks the same on every
/// renderer, including the software one, which does not support custom geometry.
///
/// Set `smooth` only for items that may be scaled. Without it the software renderer copies the pixels; with
/// it, it samples them, in several threads for tall items.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    /// Schedules a redraw for the next frame.
    void redraw();

protected:
    /// Draws the picture in the item's coordinates.
    virtual void paint(QPainter &painter) const = 0;

    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    QImage picture() const;

    bool m_isStale = true;
};

/// Declares a property of a picture; changes cause a redraw.
#define TOLMI_PICTURE_PROPERTY(type, name, setter, initialValue)                                             \
    Q_PROPERTY(type name READ name WRITE setter NOTIFY name##Changed)                                        \
public:                                                                                                      \
    const type &name() const {                                                                               \
        return m_##name;                                                                                     \
    }                                                                                                        \
    void setter(const type &newValue) {                                                                      \
        if (m_##name == newValue)                                                                            \
            return;                                                                                          \
        m_##name = newValue;                                                                                 \
        redraw();                                                                                            \
        Q_EMIT name##Changed();                                                                              \
    }                                                                                                        \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    type m_##name = initialValue;
