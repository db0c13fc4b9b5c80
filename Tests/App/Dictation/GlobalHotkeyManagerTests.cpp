#include "TolmiApp/Dictation/GlobalHotkeyManager.h"

#include "Support/FakeAccessibilityRight.h"
#include "Support/FakeEventTap.h"
#include "Support/FakeSessionLock.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <utility>

namespace {
using testing::ElementsAre;

constexpr qint64 rightOption = 61;
constexpr qint64 leftOption = 58;
constexpr quint64 alternate = 0x80000;
/// Flags of other modifiers, which say nothing about Option.
constexpr quint64 shiftAndCommand = 0x120000;

TapEvent flagsChanged(qint64 keyCode, quint64 flags) {
    return { TapEventType::FlagsChanged, keyCode, flags };
}

class GlobalHotkeyManagerTests : public testing::Test {
protected:
    GlobalHotkeyManagerTests() {
        manager->onKeyDown = [this] { heard.push_back(QStringLiteral("down")); };
        manager->onKeyUp = [this] { heard.push_back(QStringLiteral("up")); };
        manager->onChord = [this] { heard.push_back(QStringLiteral("chord")); };
    }

    FakeEventTap &tap() { return *taps.taps.back(); }

    VirtualClock clock;
    FakeEventTapFactory taps;
    FakeAccessibilityRight right;
    FakeSessionLock lock;
    std::shared_ptr<GlobalHotkeyManager> manager
        = std::make_shared<GlobalHotkeyManager>(GlobalHotkeyManager::Platform { taps, right, lock, clock });
    std::vector<QString> heard;
};

TEST_F(GlobalHotkeyManagerTests, AsksForTheRightWithoutPrompting) {
    EXPECT_TRUE(manager->checkAccessibility());
    right.availability = Availability::unavailable(QStringLiteral("no"));
    EXPECT_FALSE(manager->checkAccessibility());
    EXPECT_THAT(right.calls, ElementsAre("state", "state"));
}

TEST_F(GlobalHotkeyManagerTests, PassesPromptAndSettingsOn) {
    manager->promptForAccessibility();
    manager->openAccessibilitySettings();
    EXPECT_THAT(right.calls, ElementsAre("prompt", "openSettings"));
}

TEST_F(GlobalHotkeyManagerTests, StartWithoutTheRightOnlyPrompts) {
    right.availability = Availability::unavailable(QStringLiteral("no"));
    manager->start();
    EXPECT_THAT(right.calls, ElementsAre("state", "prompt"));
    EXPECT_TRUE(taps.taps.empty());
}

TEST_F(GlobalHotkeyManagerTests, StartWithoutTheRightLeavesARunningTapAlone) {
    manager->start();
    right.availability = Availability::unavailable(QStringLiteral("no"));
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_EQ(taps.taps.size(), 1);
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, ARefusedTapIsSilentUntilTheNextStart) {
    taps.refuses = true;
    manager->start();
    EXPECT_THAT(right.calls, ElementsAre("state"));
    taps.refuses = false;
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, RunsTheTapOnItsNamedThread) {
    manager->start();
    tap().send(flagsChanged(leftOption, 0));
    EXPECT_EQ(tap().threadName(), "Tolmi.GlobalHotkey");
    EXPECT_THAT(tap().calls(), ElementsAre("enable", "run"));
}

TEST_F(GlobalHotkeyManagerTests, ReportsOnTheMainQueueOnly) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    EXPECT_TRUE(heard.empty());
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, APressOnALockedDesktopDoesNothing) {
    manager->start();
    lock.locked = true;
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_TRUE(heard.empty());
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    lock.locked = false;
    heard.clear();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, AReleaseOnALockedDesktopEndsWhatWasBegunBefore) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    lock.locked = true;
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

struct FlagsCase {
    const char *name;
    std::vector<std::pair<qint64, quint64>> events;
    std::vector<QString> heard;
};

class GlobalHotkeyFlagsTests : public GlobalHotkeyManagerTests,
                               public testing::WithParamInterface<FlagsCase> { };

TEST_P(GlobalHotkeyFlagsTests, FollowTheRightOptionKey) {
    manager->start();
    for (const auto &[keyCode, flags] : GetParam().events)
        tap().send(flagsChanged(keyCode, flags));
    clock.runPosted();
    EXPECT_EQ(heard, GetParam().heard);
}

const QString down = QStringLiteral("down");
const QString up = QStringLiteral("up");
INSTANTIATE_TEST_SUITE_P(Table, GlobalHotkeyFlagsTests,
    testing::Values(
        FlagsCase { "pressAndRelease", { { rightOption, alternate }, { rightOption, 0 } }, { down, up } },
        FlagsCase { "otherFlagsDoNotMatter",
            { { rightOption, alternate | shiftAndCommand }, { rightOption, shiftAndCommand } },
            { down, up } },
        FlagsCase { "leftOptionIsIgnored", { { leftOption, alternate }, { leftOption, 0 } }, {} },
        FlagsCase { "otherModifiersAreIgnored", { { 55, alternate }, { 56, 0 } }, {} },
        FlagsCase { "secondDownIsDropped",
            { { rightOption, alternate }, { rightOption, alternate }, { rightOption, 0 } }, { down, up } },
        FlagsCase { "upWithoutDownIsDropped", { { rightOption, 0 }, { rightOption, 0 } }, {} },
        FlagsCase {
            "rightWhileLeftIsHeld", { { leftOption, alternate }, { rightOption, alternate } }, { down } },
        FlagsCase { "rightUpWhileLeftStaysDown",
            { { rightOption, alternate }, { leftOption, alternate }, { rightOption, alternate },
                { leftOption, 0 } },
            { down } },
        FlagsCase { "upComesWithTheNextFullRelease",
            { { rightOption, alternate }, { leftOption, alternate }, { rightOption, alternate },
                { leftOption, 0 }, { rightOption, alternate }, { rightOption, 0 } },
            { down, up } }),
    [](const auto &info) { return info.param.name; });

TEST_F(GlobalHotkeyManagerTests, ReportsAChordBetweenDownAndUp) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    tap().send({ TapEventType::ChordBegan, rightOption, alternate });
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "chord", "up"));
}

TEST_F(GlobalHotkeyManagerTests, AChordWithoutAPressIsDropped) {
    manager->start();
    tap().send({ TapEventType::ChordBegan, rightOption, alternate });
    clock.runPosted();
    EXPECT_TRUE(heard.empty());
}

TEST_F(GlobalHotkeyManagerTests, OtherTypesOfEventDoNothing) {
    manager->start();
    tap().send({ TapEventType::Other, rightOption, alternate });
    clock.runPosted();
    EXPECT_TRUE(heard.empty());
    EXPECT_THAT(tap().calls(), ElementsAre("enable", "run"));
}

TEST_F(GlobalHotkeyManagerTests, ComesBackWhenTheSystemSwitchedTheTapOff) {
    manager->start();
    for (const auto type : { TapEventType::TapDisabledByTimeout, TapEventType::TapDisabledByUserInput }) {
        tap().setEnabled(false);
        tap().send({ type });
        tap().send(flagsChanged(rightOption, alternate));
        tap().send(flagsChanged(rightOption, 0));
    }
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "up", "down", "up"));
}

TEST_F(GlobalHotkeyManagerTests, StopEndsTheTapInOrder) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    manager->stop();
    EXPECT_THAT(tap().calls(), ElementsAre("enable", "run", "disable", "invalidate", "end"));
}

TEST_F(GlobalHotkeyManagerTests, StopRightAfterStartEndsTheThread) {
    for (int round = 0; round < 50; ++round) {
        manager->start();
        manager->stop();
        EXPECT_EQ(tap().calls().back(), "end");
    }
}

TEST_F(GlobalHotkeyManagerTests, StopWithoutStartIsHarmless) {
    manager->stop();
    manager->stop();
    EXPECT_TRUE(taps.taps.empty());
}

TEST_F(GlobalHotkeyManagerTests, AKeyHeldDuringStopGetsNoKeyUp) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    manager->stop();
    manager->start();
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, TellsWhetherTheKeyIsHeld) {
    manager->start();
    EXPECT_FALSE(manager->isHeld());
    tap().send(flagsChanged(rightOption, alternate));
    EXPECT_TRUE(manager->isHeld());
    tap().send(flagsChanged(rightOption, 0));
    EXPECT_FALSE(manager->isHeld());
    tap().send(flagsChanged(rightOption, alternate));
    manager->stop();
    EXPECT_FALSE(manager->isHeld());
}

TEST_F(GlobalHotkeyManagerTests, StartReplacesARunningTap) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    manager->start();
    ASSERT_EQ(taps.taps.size(), 2);
    EXPECT_EQ(taps.taps.front()->calls().back(), "end");
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "down"));
}

TEST_F(GlobalHotkeyManagerTests, WithoutCallbacksTheKeyIsStillFollowed) {
    const auto onKeyDown = std::exchange(manager->onKeyDown, {});
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    manager->onKeyDown = onKeyDown;
    tap().send(flagsChanged(rightOption, alternate));
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("up"));
}

TEST_F(GlobalHotkeyManagerTests, QueuedEventsDoNotOutliveTheManager) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    manager.reset();
    EXPECT_EQ(tap().calls().back(), "end");
    clock.runPosted();
    EXPECT_TRUE(heard.empty());
}

TEST_F(GlobalHotkeyManagerTests, EventsThatArriveDuringStopAreSafe) {
    for (int round = 0; round < 20; ++round) {
        manager->start();
        auto running = taps.taps.back();
        running->send(flagsChanged(leftOption, 0));
        std::thread sender([running] { running->post(flagsChanged(rightOption, alternate)); });
        manager->stop();
        sender.join();
    }
    clock.runPosted();
    EXPECT_LE(heard.size(), 20);
}

using Press = GlobalHotkeyManager::Press;
const QString other = QStringLiteral("other");
const QString third = QStringLiteral("third");

TEST_F(GlobalHotkeyManagerTests, AnotherSourcePressesBesideTheKey) {
    EXPECT_EQ(manager->press(other), Press::Counts);
    EXPECT_EQ(manager->holder(), other);
    manager->release(other);
    EXPECT_THAT(heard, ElementsAre("down", "up"));
    EXPECT_FALSE(manager->holder());
}

TEST_F(GlobalHotkeyManagerTests, AnotherSourceThatRepeatsIsHeardOnce) {
    manager->press(other);
    EXPECT_EQ(manager->press(other), Press::Repeated);
    EXPECT_EQ(manager->press(third), Press::HeldElsewhere);
    manager->release(third);
    EXPECT_THAT(heard, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTests, TheKeyDoesNothingDuringThePressOfAnotherSource) {
    manager->start();
    manager->press(other);
    tap().send(flagsChanged(rightOption, alternate));
    tap().send({ TapEventType::ChordBegan, rightOption, alternate });
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
    manager->release(other);
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

TEST_F(GlobalHotkeyManagerTests, AnotherSourceDoesNothingWhileTheKeyIsHeld) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    EXPECT_EQ(manager->press(other), Press::HeldElsewhere);
    manager->release(other);
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "up"));
    EXPECT_EQ(manager->press(other), Press::Counts);
}

TEST_F(GlobalHotkeyManagerTests, ThePressOfAnotherSourceSurvivesARestart) {
    manager->start();
    manager->press(other);
    manager->start();
    clock.runPosted();
    EXPECT_EQ(manager->holder(), other);
    manager->release(other);
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

TEST_F(GlobalHotkeyManagerTests, AKeyHeldDuringStopLeavesTheOtherSourcesFree) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    manager->stop();
    clock.runPosted();
    EXPECT_FALSE(manager->holder());
    EXPECT_EQ(manager->press(other), Press::Counts);
}

TEST_F(GlobalHotkeyManagerTests, AKeyHeldDuringStopIsForgottenBehindItsQueuedPress) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    manager->stop();
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down"));
    EXPECT_FALSE(manager->holder());
}

TEST_F(GlobalHotkeyManagerTests, AQuickPressBeforeStopIsHeardToItsEnd) {
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    tap().send(flagsChanged(rightOption, 0));
    manager->stop();
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

TEST_F(GlobalHotkeyManagerTests, OnALockedDesktopAnotherSourceOnlyReleases) {
    manager->press(other);
    lock.locked = true;
    manager->release(other);
    EXPECT_EQ(manager->press(other), Press::Locked);
    EXPECT_THAT(heard, ElementsAre("down", "up"));
    EXPECT_FALSE(manager->holder());
}

TEST_F(GlobalHotkeyManagerTests, AnotherPressIsForgottenAndTheKeysIsNot) {
    manager->press(other);
    manager->forgetOtherPress();
    EXPECT_FALSE(manager->holder());
    manager->release(other);
    EXPECT_THAT(heard, ElementsAre("down"));
    manager->start();
    tap().send(flagsChanged(rightOption, alternate));
    clock.runPosted();
    manager->forgetOtherPress();
    tap().send(flagsChanged(rightOption, 0));
    clock.runPosted();
    EXPECT_THAT(heard, ElementsAre("down", "down", "up"));
}
} // namespace
