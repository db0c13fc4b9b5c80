#include "TolmiApp/Design/Drawing/LevelRing.h"
#include "Views/ViewsFixture.h"

#include <QPainter>

namespace {

class Ring : public LevelRing {
public:
    Ring() { setSize(QSizeF(150, 150)); }

    QImage picture() const {
        QImage image(150, 150, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
        return image;
    }

    /// Where the line of the circle lies: from its inner to its outer edge, in pixels from the middle.
    std::pair<int, int> line() const {
        const QImage image = picture();
        std::pair<int, int> edges { 0, 0 };
        for (int distance = 0; distance < 75; ++distance) {
            if (qAlpha(image.pixel(75 + distance, 75)) < 0x80)
                continue;
            edges.second = distance + 1;
            if (edges.first == 0)
                edges.first = distance;
        }
        return edges;
    }
};

class LevelRings : public ViewsFixture { };

} // namespace

TEST_F(LevelRings, TheCircleIsALineOfTwoPixelsAroundARadiusOf22) {
    Ring ring;
    ring.setCircleAlpha(1);
    EXPECT_EQ(ring.line(), std::pair(21, 23));
    ring.setCircleScale(2);
    EXPECT_EQ(ring.line(), std::pair(42, 46)) << "the line grows with it";
}

TEST_F(LevelRings, ThereIsNothingWithoutALevel) {
    const Ring ring;
    EXPECT_EQ(ring.line(), std::pair(0, 0));
}
