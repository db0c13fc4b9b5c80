#pragma once

#include "Platform/DesktopLook.h"
#include "Support/UntilTrue.h"

#include <gtest/gtest.h>

/// What every desktop's look does. `Made` gives the desktop's `look()` and what a user does to the desktop:
/// `choose(appearance)` and `reduceMotion(bool)`; nothing is chosen at first.
template <typename Made>
class DesktopLookContract : public testing::Test {
protected:
    bool shows(std::optional<Appearance> appearance) {
        return untilTrue([this, appearance] { return look().appearance() == appearance; });
    }
    DesktopLook &look() { return made.look(); }

    Made made;
};

TYPED_TEST_SUITE_P(DesktopLookContract);

TYPED_TEST_P(DesktopLookContract, HasNoPreferenceAtFirst) {
    EXPECT_EQ(this->look().appearance(), std::nullopt);
    EXPECT_FALSE(this->look().isMotionReduced());
}

TYPED_TEST_P(DesktopLookContract, FollowsTheUser) {
    this->made.choose(Appearance::Dark);
    EXPECT_TRUE(this->shows(Appearance::Dark));
    this->made.choose(Appearance::Light);
    EXPECT_TRUE(this->shows(Appearance::Light));
    this->made.choose({});
    EXPECT_TRUE(this->shows({}));
}

TYPED_TEST_P(DesktopLookContract, FollowsTheMotion) {
    this->made.reduceMotion(true);
    EXPECT_TRUE(untilTrue([this] { return this->look().isMotionReduced(); }));
    this->made.reduceMotion(false);
    EXPECT_TRUE(untilTrue([this] { return !this->look().isMotionReduced(); }));
}

TYPED_TEST_P(DesktopLookContract, TellsARealChangeOnly) {
    int changes = 0;
    QObject::connect(&this->look(), &DesktopLook::changed, &this->look(), [&changes] { ++changes; });
    this->made.choose(Appearance::Dark);
    this->made.choose(Appearance::Dark);
    this->made.reduceMotion(false);
    this->made.choose(Appearance::Light);
    EXPECT_TRUE(this->shows(Appearance::Light));
    EXPECT_EQ(changes, 2);
}

REGISTER_TYPED_TEST_SUITE_P(
    DesktopLookContract, HasNoPreferenceAtFirst, FollowsTheUser, FollowsTheMotion, TellsARealChangeOnly);
