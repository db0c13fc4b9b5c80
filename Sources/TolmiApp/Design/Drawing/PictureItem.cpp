#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <memory>

PictureItem::PictureItem(QQuickItem *parent)
    : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PictureItem::redraw() {
    m_isStale = true;
    update();
}

QImage PictureItem::picture() const {
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const QSize pixels(qCeil(width() * ratio), qCeil(height() * ratio));
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

QSGNode *PictureItem::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    std::unique_ptr<QSGImageNode> node(static_cast<QSGImageNode *>(oldNode));
    if (width() < 1 || height() < 1)
        return nullptr;
    const bool isNew = !node;
    if (isNew) {
        node.reset(window()->createImageNode());
        node->setOwnsTexture(true);
    }
    node->setFiltering(smooth() ? QSGTexture::Linear : QSGTexture::Nearest);
    if (isNew || m_isStale) {
        const QImage image = picture();
        node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
        // Not the item's size, which may be fractional: stretching the texture would blur it.
        node->setRect(QRectF(QPointF(), image.deviceIndependentSize()));
        m_isStale = false;
    }
    return node.release();
}

void PictureItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    if (newGeometry.size() != oldGeometry.size())
        redraw();
    QQuickItem::geometryChange(newGeometry, oldGeometry);
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData &value) {
    if (change == ItemDevicePixelRatioHasChanged)
        redraw();
    QQuickItem::itemChange(change, value);
}
