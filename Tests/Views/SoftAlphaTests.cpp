#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(SoftAlpha, BlurSpreadsAPointLikeAGaussian) {
    SoftAlpha alpha(QSize(61, 61));
    alpha.at(30, 30) = 1;
    alpha.blur(4);
    const float peak = alpha.at(30, 30);
    EXPECT_NEAR(alpha.at(34, 30) / peak, std::exp(-0.5), 1e-3);
    EXPECT_NEAR(alpha.at(30, 38) / peak, std::exp(-2.0), 1e-3);
    EXPECT_FLOAT_EQ(alpha.at(26, 30), alpha.at(34, 30));
    EXPECT_FLOAT_EQ(alpha.at(30, 34), alpha.at(34, 30));
}

TEST(SoftAlpha, BlurPreservesTheSumInside) {
    SoftAlpha alpha(QSize(61, 61));
    alpha.at(30, 30) = 1;
    alpha.blur(5);
    double sum = 0;
    for (int y = 0; y < 61; ++y) {
        for (int x = 0; x < 61; ++x)
            sum += alpha.at(x, y);
    }
    EXPECT_NEAR(sum, 1, 1e-3);
}

TEST(SoftAlpha, BlurWiderThanTheImageIsHarmless) {
    SoftAlpha alpha(QSize(3, 2));
    alpha.at(1, 1) = 1;
    alpha.blur(40);
    EXPECT_GT(alpha.at(0, 0), 0);
}

TEST(SoftAlpha, ImageCarriesTheColor) {
    SoftAlpha alpha(QSize(2, 1));
    alpha.at(0, 0) = 1;
    const QImage image = alpha.image(QColor(255, 255, 255, 128));
    EXPECT_NEAR(qAlpha(image.pixel(0, 0)), 128, 1);
    EXPECT_EQ(qAlpha(image.pixel(1, 0)), 0);
}
