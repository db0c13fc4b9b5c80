#include "TolmiApp/Profile/PictureThumbnail.h"

#include "Support/Pictures.h"
#include "Support/ResidentMemory.h"

#include <gtest/gtest.h>

namespace {

constexpr int side = 96;

QImage thumbnailOf(const QByteArray &picture) {
    return QImage::fromData(PictureThumbnail::jpeg(picture, side).value_or(QByteArray()));
}

QImage thumbnailOf(const QImage &image, const char *format = "PNG") {
    return thumbnailOf(Pictures::file(image, format));
}

/// Whether a picture that went through JPEG still has about this colour.
bool isAbout(const QColor &seen, const QColor &wanted) {
    return std::abs(seen.red() - wanted.red()) < 30 && std::abs(seen.green() - wanted.green()) < 30
        && std::abs(seen.blue() - wanted.blue()) < 30;
}

/// Red on the left and blue on the right half.
QImage redThenBlue(const QSize &size) {
    QImage image = Pictures::plain(size, Qt::blue);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width() / 2; ++x)
            image.setPixelColor(x, y, Qt::red);
    }
    return image;
}

} // namespace

TEST(PictureThumbnail, LongestSideIsLimitedAndTheShapeKept) {
    const std::vector<std::pair<QSize, QSize>> rows { { { 400, 200 }, { 96, 48 } },
        { { 200, 400 }, { 48, 96 } }, { { 97, 97 }, { 96, 96 } }, { { 96, 96 }, { 96, 96 } },
        { { 1000, 3 }, { 96, 1 } }, { { 1, 300 }, { 1, 96 } } };
    for (const auto &[size, expected] : rows) {
        EXPECT_EQ(thumbnailOf(Pictures::plain(size, Qt::red)).size(), expected);
        EXPECT_EQ(thumbnailOf(Pictures::plain(size, Qt::red), "JPEG").size(), expected);
    }
}

TEST(PictureThumbnail, SmallPicturesAreNotEnlarged) {
    EXPECT_EQ(thumbnailOf(Pictures::plain({ 20, 10 }, Qt::red)).size(), QSize(20, 10));
    EXPECT_EQ(thumbnailOf(Pictures::plain({ 1, 1 }, Qt::red)).size(), QSize(1, 1));
}

TEST(PictureThumbnail, IsAJpegFile) {
    const auto jpeg = PictureThumbnail::jpeg(Pictures::file(Pictures::plain({ 9, 9 }, Qt::red), "PNG"), side);
    ASSERT_TRUE(jpeg.has_value());
    EXPECT_TRUE(jpeg->startsWith("\xff\xd8\xff"));
    EXPECT_TRUE(jpeg->endsWith("\xff\xd9"));
}

// The table by which brightness is rounded tells the quality. Its first entries at a quality of 85 are 30
// hundredths of those of the standard's example.
TEST(PictureThumbnail, HasAQualityOf85) {
    const auto jpeg = PictureThumbnail::jpeg(Pictures::file(Pictures::plain({ 9, 9 }, Qt::red), "PNG"), side);
    ASSERT_TRUE(jpeg.has_value());
    const qsizetype table = jpeg->indexOf("\xff\xdb");
    constexpr qsizetype header = 5;
    ASSERT_GE(table, 0);
    EXPECT_EQ(jpeg->mid(table + header, 8).toHex(' '), QByteArray("05 03 04 04 04 03 05 04"));
}

TEST(PictureThumbnail, FormatsThatQtWritesCanBeRead) {
    for (const char *format : { "PNG", "JPEG", "BMP", "PPM" }) {
        const QImage thumbnail = thumbnailOf(Pictures::plain({ 200, 100 }, QColor(200, 40, 90)), format);
        EXPECT_EQ(thumbnail.size(), QSize(96, 48)) << format;
        EXPECT_TRUE(isAbout(thumbnail.pixelColor(10, 10), QColor(200, 40, 90))) << format;
    }
}

TEST(PictureThumbnail, TheStoredOrientationIsApplied) {
    const QImage image = redThenBlue({ 400, 200 });
    struct Row {
        int orientation;
        QSize size;
        QPoint red;
        QPoint blue;
    };
    for (const Row &row :
        { Row { 1, { 96, 48 }, { 10, 24 }, { 86, 24 } }, Row { 2, { 96, 48 }, { 86, 24 }, { 10, 24 } },
            Row { 3, { 96, 48 }, { 86, 24 }, { 10, 24 } }, Row { 4, { 96, 48 }, { 10, 24 }, { 86, 24 } },
            Row { 5, { 48, 96 }, { 24, 10 }, { 24, 86 } }, Row { 6, { 48, 96 }, { 24, 10 }, { 24, 86 } },
            Row { 7, { 48, 96 }, { 24, 86 }, { 24, 10 } }, Row { 8, { 48, 96 }, { 24, 86 }, { 24, 10 } } }) {
        const QImage thumbnail = thumbnailOf(Pictures::jpegWithOrientation(image, row.orientation));
        ASSERT_EQ(thumbnail.size(), row.size) << row.orientation;
        EXPECT_TRUE(isAbout(thumbnail.pixelColor(row.red), Qt::red)) << row.orientation;
        EXPECT_TRUE(isAbout(thumbnail.pixelColor(row.blue), Qt::blue)) << row.orientation;
    }
}

TEST(PictureThumbnail, WhatIsTransparentBecomesWhite) {
    EXPECT_TRUE(
        isAbout(thumbnailOf(Pictures::plain({ 30, 30 }, Qt::transparent)).pixelColor(15, 15), Qt::white));
    const QImage halfRed = thumbnailOf(Pictures::plain({ 30, 30 }, QColor(255, 0, 0, 128)));
    EXPECT_TRUE(isAbout(halfRed.pixelColor(15, 15), QColor(255, 127, 127)));
}

TEST(PictureThumbnail, WhatIsNoPictureGivesNothing) {
    const QByteArray png = Pictures::file(redThenBlue({ 50, 50 }), "PNG");
    for (const QByteArray &content : { QByteArray(), QByteArray("a text"), QByteArray(1000, '\0'),
             png.first(8), png.first(30), QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03 packed", 17) })
        EXPECT_EQ(PictureThumbnail::jpeg(content, side), std::nullopt) << content.toHex().constData();
}

TEST(PictureThumbnail, ADeclaredGiantCostsNoMemory) {
    const std::vector<QSize> giants { { 60000, 60000 }, { 8001, 8000 }, { 2'000'000'000, 2 },
        { 2, 2'000'000'000 } };
    for (const QSize &size : giants) {
        const QByteArray png = Pictures::pngThatDeclares(size);
        resetPeakResidentMemory();
        const qint64 before = peakResidentMemory();
        EXPECT_EQ(PictureThumbnail::jpeg(png, side), std::nullopt);
        EXPECT_LT(peakResidentMemory() - before, 16 * 1024 * 1024);
    }
}
