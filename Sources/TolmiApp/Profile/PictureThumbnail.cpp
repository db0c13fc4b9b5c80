#include "TolmiApp/Profile/PictureThumbnail.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int jpegQuality = 85;

/// A packed drawing says nothing about what it unpacks to.
bool isPacked(const QByteArray &picture) {
    return picture.startsWith("\x1f\x8b");
}

bool isTooLarge(const QSize &size) {
    return qint64(size.width()) * size.height() > PictureThumbnail::maximumPixelCount;
}

QSize fitted(const QSize &size, int longestSide) {
    if (std::max(size.width(), size.height()) <= longestSide)
        return size;
    return size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

/// A null image for what cannot be decoded.
QImage decoded(const QByteArray &picture, int longestSide) {
    QBuffer buffer;
    buffer.setData(picture);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    // Only a few formats cannot tell their size beforehand, and for them the reader has a limit of its own.
    const QSize declared = reader.size();
    if (declared.isValid() && isTooLarge(declared))
        return {};
    if (declared.isValid() && !declared.isEmpty())
        reader.setScaledSize(fitted(declared, longestSide));
    const QImage image = reader.read();
    return image.isNull()
        ? image
        : image.scaled(fitted(image.size(), longestSide), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage onWhite(const QImage &image) {
    QImage canvas(image.size(), QImage::Format_RGB32);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    painter.drawImage(QRect(QPoint(), image.size()), image);
    return canvas;
}

} // namespace

std::optional<QByteArray> PictureThumbnail::jpeg(const QByteArray &picture, int longestSide) {
    if (isPacked(picture))
        return std::nullopt;
    const QImage image = decoded(picture, longestSide);
    if (image.isNull())
        return std::nullopt;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!onWhite(image).save(&buffer, "JPEG", jpegQuality))
        return std::nullopt;
    return buffer.data();
}
