#include "TolmiApp/Dictation/DictationPause.h"

#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

class DictationPause : public testing::Test {
protected:
    void start() {
        launch(runBetweenDictations([this] { return isUnderWay; }, clock, [this] { ++runCount; }));
    }

    VirtualClock clock;
    bool isUnderWay = false;
    int runCount = 0;
};

TEST_F(DictationPause, IsNoneWithoutADictation) {
    start();
    EXPECT_EQ(runCount, 1);
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}

TEST_F(DictationPause, EndsSoonAfterTheDictation) {
    isUnderWay = true;
    start();
    clock.advance(10);
    EXPECT_EQ(runCount, 0);
    isUnderWay = false;
    clock.advance(0.05);
    EXPECT_EQ(runCount, 1);
    clock.advance(10);
    EXPECT_EQ(runCount, 1);
}

TEST_F(DictationPause, EndsNotBetweenTwoThatFollowAtOnce) {
    isUnderWay = true;
    start();
    isUnderWay = false;
    clock.advance(0.01);
    isUnderWay = true;
    clock.advance(10);
    EXPECT_EQ(runCount, 0);
}
