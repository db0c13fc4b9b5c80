#include "TolmiApp/Popup/StatusItemImage.h"
#include "Views/ViewsFixture.h"

#include <QImage>

namespace {

class StatusItemImage : public ViewsFixture {
protected:
    /// The picture of a panel that is 22 pixels high.
    static QImage imageFor(Appearance panel) {
        return statusItemImage(panel).pixmap(22).toImage().convertToFormat(QImage::Format_ARGB32);
    }

    /// How many pixels of `image` are covered, and all of these in `color`.
    static int pixelsOf(const QImage &image, QRgb color) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (qAlpha(pixel) < 0xff)
                    continue;
                EXPECT_EQ(pixel, color) << x << ',' << y;
                ++count;
            }
        }
        return count;
    }
};

} // namespace

TEST_F(StatusItemImage, IsWhiteOnADarkPanelAndDarkOnALightOne) {
    EXPECT_GT(pixelsOf(imageFor(Appearance::Dark), 0xffffffff), 120);
    EXPECT_GT(pixelsOf(imageFor(Appearance::Light), 0xff242428), 120);
}

TEST_F(StatusItemImage, IsADiscWithItsBarsCutOut) {
    const QImage image = imageFor(Appearance::Dark);
    EXPECT_EQ(image.size(), QSize(22, 22));
    for (const QPoint corner : { QPoint(0, 0), QPoint(21, 0), QPoint(0, 21), QPoint(21, 21) })
        EXPECT_EQ(qAlpha(image.pixel(corner)), 0);
    EXPECT_LT(qAlpha(image.pixel(11, 11)), 0x60) << "the middle bar";
    EXPECT_EQ(qAlpha(image.pixel(11, 3)), 0xff);
}

TEST_F(StatusItemImage, IsSharpAtEveryUsualSize) {
    for (const int side : { 16, 22, 24, 32, 48 })
        EXPECT_TRUE(statusItemImage(Appearance::Light).availableSizes().contains(QSize(side, side))) << side;
}
