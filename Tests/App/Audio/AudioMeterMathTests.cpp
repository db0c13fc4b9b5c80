#include "TolmiApp/Audio/AudioMeterMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
} // namespace

TEST(AudioMeterMath, ClampLimitsToTheUnitRange) {
    EXPECT_EQ(AudioMeterMath::clamp(-0.1), 0.0);
    EXPECT_EQ(AudioMeterMath::clamp(0.0), 0.0);
    EXPECT_EQ(AudioMeterMath::clamp(0.3), 0.3);
    EXPECT_EQ(AudioMeterMath::clamp(1.0), 1.0);
    EXPECT_EQ(AudioMeterMath::clamp(7.0), 1.0);
    EXPECT_EQ(AudioMeterMath::clamp(double(infinity)), 1.0);
    EXPECT_EQ(AudioMeterMath::clamp(double(-infinity)), 0.0);
    EXPECT_EQ(AudioMeterMath::clamp(double(notANumber)), 0.0);
}

TEST(AudioMeterMath, TheLevelIsLinearInDecibels) {
    struct Row {
        float power;
        float floor;
        double level;
    };
    const Row rows[] = {
        { -50, -50, 0.0 },
        { -25, -50, 0.5 },
        { -12.5F, -50, 0.75 },
        { 0, -50, 1.0 },
        { 3, -50, 1.0 },
        { -60, -50, 0.0 },
        { -60, -80, 0.25 },
        { -120, -50, 0.0 },
        { -infinity, -50, 0.0 },
        { infinity, -50, 0.0 },
        { notANumber, -50, 0.0 },
        { -10, 0, 0.0 },
        { 0, 0, 0.0 },
        { -10, 5, 0.0 },
        { -10, notANumber, 0.0 },
    };
    for (const Row &row : rows)
        EXPECT_EQ(AudioMeterMath::normalizedLevel(row.power, row.floor), row.level)
            << row.power << " dB over " << row.floor;
}

TEST(AudioMeterMath, TheDefaultFloorIsMinusFifty) {
    EXPECT_EQ(AudioMeterMath::normalizedLevel(-50), 0.0);
    EXPECT_EQ(AudioMeterMath::normalizedLevel(-25), 0.5);
}

TEST(AudioMeterMath, SmoothingRisesFastAndFallsSlowly) {
    struct Row {
        double current;
        double target;
        double result;
    };
    const Row rows[] = {
        { 0, 1, 0.34 },
        { 1, 0, 0.86 },
        { 2, 0.5, 0.93 },
        { -3, 0.5, 0.17 },
        { 0.5, 9, 0.67 },
        { 0.5, -9, 0.43 },
        { 0.3, 0.3, 0.3 },
        { 0, 0, 0 },
        { 1, 1, 1 },
    };
    for (const Row &row : rows)
        EXPECT_DOUBLE_EQ(AudioMeterMath::smoothedLevel(row.current, row.target), row.result)
            << row.current << " towards " << row.target;
}

TEST(AudioMeterMath, SmoothingAcceptsOtherFactors) {
    EXPECT_DOUBLE_EQ(AudioMeterMath::smoothedLevel(0, 1, 0.5, 0.1), 0.5);
    EXPECT_DOUBLE_EQ(AudioMeterMath::smoothedLevel(1, 0, 0.5, 0.1), 0.9);
    EXPECT_DOUBLE_EQ(AudioMeterMath::smoothedLevel(0, 1, 3.0, 0.1), 1.0);
}

TEST(AudioMeterMath, SmoothingStaysBetweenItsEnds) {
    for (double current = 0; current <= 1; current += 0.05) {
        for (double target = 0; target <= 1; target += 0.05) {
            const double result = AudioMeterMath::smoothedLevel(current, target);
            EXPECT_GE(result, std::fmin(current, target));
            EXPECT_LE(result, std::fmax(current, target));
        }
    }
}
