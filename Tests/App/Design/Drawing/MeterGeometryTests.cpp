#include "TolmiApp/Design/Drawing/MeterGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace MeterGeometry;

namespace {
constexpr double pi = std::numbers::pi;
constexpr double tolerance = 1e-9;
} // namespace

TEST(MeterGeometry, FirstBarPointsUpAndOrderIsClockwise) {
    EXPECT_NEAR(angle(position(overlayRing, 0)), -pi / 2, tolerance);
    EXPECT_NEAR(angle(position(overlayRing, 6)), 0, tolerance);
    EXPECT_NEAR(angle(position(overlayRing, 12)), pi / 2, tolerance);
    EXPECT_NEAR(angle(position(orbRing, 24)), pi, tolerance);
}

TEST(MeterGeometry, WaveHasFourCrestsThatMoveWithTime) {
    for (const double quarter : { 0.0, 0.25, 0.5, 0.75 })
        EXPECT_NEAR(wave(quarter, 0), 0, tolerance);
    for (const double crest : { 0.125, 0.375, 0.625, 0.875 })
        EXPECT_NEAR(wave(crest, 0), 1, tolerance);
    EXPECT_NEAR(wave(0, pi / 2 / 3.4), 1, tolerance);
    EXPECT_NEAR(wave(0.1, 2), std::fabs(std::sin(6.8 + 0.4 * pi)), tolerance);
}

TEST(MeterGeometry, GateOpensBetweenSilenceAndVoice) {
    EXPECT_EQ(gate(0), 0);
    EXPECT_EQ(gate(0.04), 0);
    EXPECT_NEAR(gate(0.1), 0.48, tolerance);
    EXPECT_NEAR(gate(0.165), 1, tolerance);
    EXPECT_EQ(gate(1), 1);
    EXPECT_EQ(gate(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(MeterGeometry, LengthAndAlphaOfTheOverlay) {
    EXPECT_NEAR(length(overlayRing, 0.5, 0), 22 * 0.5 * 0.28, tolerance);
    EXPECT_NEAR(length(overlayRing, 1, 1), 22, tolerance);
    EXPECT_NEAR(alpha(overlayRing, 1, 0), 0.5, tolerance);
    EXPECT_NEAR(alpha(overlayRing, 1, 1), 1, tolerance);
    EXPECT_NEAR(alpha(overlayRing, 0.1, 0.5), 0.48 * 0.75, tolerance);
}

TEST(MeterGeometry, LengthAndAlphaOfTheOrb) {
    EXPECT_NEAR(length(orbRing, 0.5, 0.5), 30 * 0.5 * 0.64, tolerance);
    EXPECT_NEAR(alpha(orbRing, 1, 0), 0.48, tolerance);
    EXPECT_NEAR(alpha(orbRing, 1, 1), 1, tolerance);
}

TEST(MeterGeometry, OverlayIsLighterAtTopAndBottom) {
    EXPECT_NEAR(shade(overlayRing, 0, 0.3), 0.92, tolerance);
    EXPECT_NEAR(shade(overlayRing, 0.25, 0.3), 0.58, tolerance);
    EXPECT_NEAR(shade(overlayRing, 0.5, 0.3), 0.92, tolerance);
}

TEST(MeterGeometry, OrbIsLighterAtTheCrestsOfTheWave) {
    EXPECT_NEAR(shade(orbRing, 0.25, 0), 0.58, tolerance);
    EXPECT_NEAR(shade(orbRing, 0.25, 1), 0.92, tolerance);
}

TEST(MeterGeometry, SilenceShowsNoBars) {
    for (const RingStyle &style : { overlayRing, orbRing }) {
        for (const double level : { -1.0, 0.0, 0.02, 0.04, 0.0401 }) {
            for (double seconds = 0; seconds < 2; seconds += 0.01)
                EXPECT_TRUE(ringBars(style, level, seconds).isEmpty()) << level << " at " << seconds;
        }
    }
}

TEST(MeterGeometry, LoudVoiceShowsEveryBar) {
    EXPECT_EQ(ringBars(overlayRing, 1, 0.3).size(), 24);
    EXPECT_EQ(ringBars(orbRing, 1, 0.3).size(), 32);
    EXPECT_EQ(ringBars(overlayRing, 7, 0.3).size(), 24);
}

TEST(MeterGeometry, BarsStayInsideTheirBounds) {
    for (const RingStyle &style : { overlayRing, orbRing }) {
        for (double level = 0; level <= 1.2; level += 0.05) {
            for (const RingBar &bar : ringBars(style, level, level * 17)) {
                EXPECT_GT(bar.length, 0.5);
                EXPECT_LE(bar.length, style.maximumLength + tolerance);
                EXPECT_GT(bar.alpha, 0.01);
                EXPECT_LE(bar.alpha, 1 + tolerance);
                EXPECT_GE(bar.shade, 0.58 - tolerance);
                EXPECT_LE(bar.shade, 0.92 + tolerance);
            }
        }
    }
}

TEST(MeterGeometry, InactiveWaveHasAPattern) {
    const QList<double> expected { 18, 11, 11, 11, 18, 11, 11, 11, 18 };
    for (int index = 0; index < expected.size(); ++index)
        EXPECT_EQ(barHeight(index, 28, false, 0.7), expected[index]);
}

TEST(MeterGeometry, ActiveWaveInSilenceHasAPattern) {
    for (const double level : { -0.5, 0.0, 0.001 }) {
        const QList<double> expected { 13, 10, 10, 13, 10, 10, 13 };
        for (int index = 0; index < expected.size(); ++index)
            EXPECT_EQ(barHeight(index, 28, true, level), expected[index]);
    }
}

TEST(MeterGeometry, ActiveWaveFollowsItsFormula) {
    // A single bar has position 0, which is half the width from the centre.
    EXPECT_NEAR(barHeight(0, 1, true, 0.5), 10 + 0.1 * 6 + 0.5 * (20 + 0.1 * 42) * 0.58, tolerance);
    const double texture = 0.58 + 0.42 * std::fabs(std::sin(14 * 0.62));
    EXPECT_NEAR(barHeight(14, 29, true, 0.25), 16 + 0.25 * 62 * texture, tolerance);
}

TEST(MeterGeometry, WaveIsNeverLowerThanTenNorHigherThanSeventyTwo) {
    for (int bars = 1; bars < 80; bars += 3) {
        for (int index = 0; index < bars; ++index) {
            for (double level = -0.2; level < 1.5; level += 0.07) {
                EXPECT_GE(barHeight(index, bars, true, level), 10);
                EXPECT_LE(barHeight(index, bars, true, level), 72);
            }
        }
    }
}
