#pragma once

#include <QImage>
#include <QQuickItem>

class QPainter;

/// An item that is drawn by QPainter when something of it changes and is a texture in between. It looks the
/// same on every renderer, the software one included, where geometry of one's own would not show at all.
///
/// `smooth` is for what may be stretched. Where it is false, the software renderer copies the pixels;
/// otherwise it samples them, and hands everything of some height to several threads.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    /// Has the picture drawn anew for the next frame.
    void redraw();

protected:
    /// Draws the picture; the painter's unit is the item's, its origin the upper left corner of the item.
    virtual void paint(QPainter &painter) const = 0;

    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    QImage picture() const;

    bool m_isStale = true;
};

/// Declares a property of a picture whose change has it drawn anew.
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
