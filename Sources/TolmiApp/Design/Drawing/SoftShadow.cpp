#include "TolmiApp/Design/Drawing/SoftShadow.h"

#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <QCache>
#include <QMutex>
#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <cmath>
#include <functional>
#include <memory>

namespace {

/// The parameters that determine a shadow's image.
struct Look {
    double radius;
    double sigma;
    double offsetY;
    QRgb color;
    QSizeF plateSize;
    double devicePixelRatio;

    bool operator==(const Look &) const = default;
};

size_t qHash(const Look &look, size_t seed) {
    return qHashMulti(seed, look.radius, look.sigma, look.offsetY, look.color, look.plateSize.width(),
        look.plateSize.height(), look.devicePixelRatio);
}

/// Cache of recent shadow images, because blurring is slow and similar plates share a shadow. Used by the
/// render threads of all windows.
class Patches {
public:
    QImage get(const Look &look, const std::function<QImage()> &make) {
        const QMutexLocker lock(&m_mutex);
        if (const QImage *known = m_images.object(look))
            return *known;
        const QImage image = make();
        m_images.insert(look, new QImage(image), image.sizeInBytes());
        return image;
    }

private:
    static constexpr qsizetype mostBytes = 2'000'000;

    QMutex m_mutex;
    QCache<Look, QImage> m_images { mostBytes };
};
Q_GLOBAL_STATIC(Patches, patches)

} // namespace

SoftShadow::SoftShadow(QQuickItem *parent)
    : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void SoftShadow::redraw() {
    m_isStale = true;
    update();
}

double SoftShadow::margin() const {
    return std::ceil(3 * sigma() + std::fabs(offsetY()));
}

double SoftShadow::corner() const {
    return 2 * margin() + std::ceil(radius());
}

QImage SoftShadow::patch(QSizeF plateSize, double devicePixelRatio) const {
    const QRectF plate(QPointF(margin(), margin()), plateSize);
    const QSizeF whole = plateSize + QSizeF(2 * margin(), 2 * margin());
    const QSize pixels(qCeil(whole.width() * devicePixelRatio), qCeil(whole.height() * devicePixelRatio));
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    QPainterPath outline;
    outline.addRoundedRect(plate, radius(), radius());
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outline.translated(0, offsetY()), Qt::black);
    }
    SoftAlpha alpha(image);
    alpha.blur(sigma() * devicePixelRatio);
    image = alpha.image(color());
    image.setDevicePixelRatio(devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outline, Qt::black);
    return image;
}

QSGNode *SoftShadow::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) {
    std::unique_ptr<QSGNinePatchNode> node(static_cast<QSGNinePatchNode *>(oldNode));
    if (width() < 1 || height() < 1)
        return nullptr;
    const bool isNew = !node;
    if (isNew)
        node.reset(window()->createNinePatchNode());
    // Blurring is slow, so a large plate uses a small nine-patch image; resizing a window is then cheap.
    const double smallest = 2 * (corner() - margin()) + 2;
    const QSizeF plate(std::min(width(), smallest), std::min(height(), smallest));
    const bool stretchesAcross = plate.width() < width();
    const bool stretchesDown = plate.height() < height();
    const double ratio = window()->effectiveDevicePixelRatio();
    if (isNew || m_isStale) {
        const Look look { radius(), sigma(), offsetY(), color().rgba(), plate, ratio };
        const QImage image = patches->get(look, [&] { return patch(plate, ratio); });
        node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
        node->setDevicePixelRatio(ratio);
        const double across = stretchesAcross ? corner() : (plate.width() + 2 * margin()) / 2;
        const double down = stretchesDown ? corner() : (plate.height() + 2 * margin()) / 2;
        node->setPadding(across, down, across, down);
        m_isStale = false;
    }
    node->setBounds(boundingRect().adjusted(-margin(), -margin(), margin(), margin()));
    node->update();
    return node.release();
}

void SoftShadow::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    const double smallest = 2 * (corner() - margin()) + 2;
    const bool wasStretched = oldGeometry.width() > smallest && oldGeometry.height() > smallest;
    const bool isStretched = newGeometry.width() > smallest && newGeometry.height() > smallest;
    if (wasStretched && isStretched)
        update();
    else if (newGeometry.size() != oldGeometry.size())
        redraw();
    QQuickItem::geometryChange(newGeometry, oldGeometry);
}

void SoftShadow::itemChange(ItemChange change, const ItemChangeData &value) {
    if (change == ItemDevicePixelRatioHasChanged)
        redraw();
    QQuickItem::itemChange(change, value);
}
