#include "TolmiApp/Studio/StudioAtLaunch.h"

#include "Support/FakeLoginSession.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

class StudioAtLaunch : public testing::Test {
protected:
    void start() {
        launch(openIfOutOfReach(
            clock, session, [this] { return isInReach; }, [this] { ++openCount; }));
    }

    VirtualClock clock;
    FakeLoginSession session;
    bool isInReach = false;
    int openCount = 0;
};

TEST_F(StudioAtLaunch, StaysClosedForThoseWhoReachTheProgram) {
    isInReach = true;
    start();
    clock.advance(100);
    EXPECT_EQ(openCount, 0);
}

TEST_F(StudioAtLaunch, WaitsForTheAnswerOfThePanel) {
    start();
    clock.advance(0.4);
    isInReach = true;
    clock.advance(100);
    EXPECT_EQ(openCount, 0);
}

TEST_F(StudioAtLaunch, OpensSoonWhereNobodyTellsHowOldTheSessionIs) {
    start();
    EXPECT_EQ(openCount, 0);
    clock.advance(0.5);
    EXPECT_EQ(openCount, 1);
    clock.advance(100);
    EXPECT_EQ(openCount, 1);
}

TEST_F(StudioAtLaunch, OpensSoonOnADesktopThatHasStarted) {
    session.seconds = 60;
    start();
    clock.advance(0.5);
    EXPECT_EQ(openCount, 1);
}

TEST_F(StudioAtLaunch, WaitsForThePanelOfADesktopThatStarts) {
    session.seconds = 59;
    start();
    clock.advance(10);
    isInReach = true;
    clock.advance(100);
    EXPECT_EQ(openCount, 0);
}

TEST_F(StudioAtLaunch, WaitsForNoPanelForLong) {
    session.seconds = 2;
    start();
    clock.advance(10.4);
    EXPECT_EQ(openCount, 0);
    clock.advance(0.1);
    EXPECT_EQ(openCount, 1);
}
