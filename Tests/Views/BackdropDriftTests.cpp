#include "TolmiApp/Design/Drawing/BackdropDrift.h"

#include <gtest/gtest.h>

TEST(BackdropDrift, MovesBackAndForth) {
    EXPECT_DOUBLE_EQ(BackdropDrift::positionAt(0), 0);
    EXPECT_NEAR(BackdropDrift::positionAt(9), 0.5, 1e-6);
    EXPECT_NEAR(BackdropDrift::positionAt(18), 1, 1e-6);
    EXPECT_NEAR(BackdropDrift::positionAt(27), 0.5, 1e-6);
    EXPECT_NEAR(BackdropDrift::positionAt(36), 0, 1e-6);
    EXPECT_NEAR(BackdropDrift::positionAt(36 * 1000 + 9), 0.5, 1e-6);
}

TEST(BackdropDrift, StartsAndEndsSlowly) {
    EXPECT_LT(BackdropDrift::positionAt(1), 1.0 / 18 / 2);
    EXPECT_GT(BackdropDrift::positionAt(17), 1 - 1.0 / 18 / 2);
}

TEST(BackdropDrift, IsStillUnlessRunning) {
    BackdropDrift drift;
    EXPECT_FALSE(drift.isRunning());
    EXPECT_EQ(drift.position(), 0);
    drift.setRunning(true);
    EXPECT_TRUE(drift.isRunning());
    drift.setRunning(false);
    EXPECT_FALSE(drift.isRunning());
}
