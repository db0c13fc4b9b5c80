#include "TolmiApp/Dictation/DictationKeyWait.h"

#include "Support/FakeFlowCollaborators.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

class DictationKeyWait : public testing::Test {
protected:
    void start() {
        launch(runWhenKeyIsUp(hotkey, clock, [this] { ++runCount; }));
    }

    FlowJournal journal;
    std::shared_ptr<FakeHotkeyManager> hotkey = std::make_shared<FakeHotkeyManager>(journal);
    VirtualClock clock;
    int runCount = 0;
};

TEST_F(DictationKeyWait, IsNoneWhileTheKeyIsUp) {
    start();
    EXPECT_EQ(runCount, 1);
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}

TEST_F(DictationKeyWait, EndsSoonAfterTheKeyUp) {
    hotkey->isKeyHeld = true;
    start();
    clock.advance(10);
    EXPECT_EQ(runCount, 0);
    hotkey->isKeyHeld = false;
    clock.advance(0.05);
    EXPECT_EQ(runCount, 1);
    clock.advance(10);
    EXPECT_EQ(runCount, 1);
}

TEST_F(DictationKeyWait, EndsNotBetweenTwoPressesThatFollowAtOnce) {
    hotkey->isKeyHeld = true;
    start();
    hotkey->isKeyHeld = false;
    clock.advance(0.01);
    hotkey->isKeyHeld = true;
    clock.advance(10);
    EXPECT_EQ(runCount, 0);
}
