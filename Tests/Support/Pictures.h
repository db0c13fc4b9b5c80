#pragma once

#include <QImage>

/// Picture files for tests.
namespace Pictures {

/// A picture of one colour.
QImage plain(const QSize &size, const QColor &color);

/// The file of `image` in a format that Qt writes, such as "PNG".
QByteArray file(const QImage &image, const char *format);

/// A JPEG file with an Exif orientation, 1 to 8.
QByteArray jpegWithOrientation(const QImage &image, int orientation);

/// A small, well-formed PNG file that declares another size than it has.
QByteArray pngThatDeclares(const QSize &size);

/// Gives every chunk of a PNG file the check sum that its content needs, so that a decoder looks into it.
QByteArray withPngCheckSums(QByteArray png);

} // namespace Pictures
