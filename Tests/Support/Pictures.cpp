#include "Support/Pictures.h"

#include <QBuffer>
#include <QtEndian>

namespace {

/// The check sum of PNG chunks (ISO 3309).
quint32 checkSum(const char *data, qsizetype size) {
    quint32 sum = ~0u;
    for (qsizetype index = 0; index < size; ++index) {
        sum ^= quint8(data[index]);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xedb88320u : 0);
    }
    return ~sum;
}

void put(QByteArray &file, qsizetype position, quint32 value) {
    qToBigEndian(value, file.data() + position);
}

} // namespace

QImage Pictures::plain(const QSize &size, const QColor &color) {
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

QByteArray Pictures::file(const QImage &image, const char *format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 95);
    return buffer.data();
}

QByteArray Pictures::jpegWithOrientation(const QImage &image, int orientation) {
    // An APP1 segment with a big-endian directory of one entry, put behind the start of the image.
    QByteArray segment("\xff\xe1\x00\x22"
                       "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\0\0\0\0\0\0\0",
        36);
    segment[29] = char(orientation);
    return file(image, "JPEG").insert(2, segment);
}

QByteArray Pictures::pngThatDeclares(const QSize &size) {
    QByteArray png = file(plain({ 1, 1 }, Qt::red), "PNG");
    put(png, 16, quint32(size.width()));
    put(png, 20, quint32(size.height()));
    return withPngCheckSums(std::move(png));
}

QByteArray Pictures::withPngCheckSums(QByteArray png) {
    constexpr qsizetype signature = 8;
    constexpr qsizetype besidesContent = 12;
    for (qsizetype start = signature; start + besidesContent <= png.size();) {
        const qsizetype length = qFromBigEndian<quint32>(png.constData() + start);
        const qsizetype end = start + besidesContent + length;
        if (end > png.size())
            break;
        put(png, end - 4, checkSum(png.constData() + start + 4, length + 4));
        start = end;
    }
    return png;
}
