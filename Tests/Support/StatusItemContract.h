#pragma once

#include "Platform/StatusItem.h"
#include "Support/UntilTrue.h"

#include <gtest/gtest.h>

/// What every status item does on a desktop that tells of presses. `Made` builds one in its constructor,
/// gives it as `item()` and presses it with `press()`.
template <typename Made>
class StatusItemContract : public testing::Test {
protected:
    StatusItem &item() { return m_made.item(); }
    void press() { m_made.press(); }

private:
    Made m_made;
};

TYPED_TEST_SUITE_P(StatusItemContract);

TYPED_TEST_P(StatusItemContract, HasAPlace) {
    EXPECT_TRUE(this->item().availability().isAvailable());
    ASSERT_TRUE(untilTrue([this] { return this->item().geometry().has_value(); }));
    EXPECT_FALSE(this->item().geometry()->isEmpty());
}

TYPED_TEST_P(StatusItemContract, TellsOfEveryPress) {
    int presses = 0;
    this->item().setActivationObserver([&presses] { ++presses; });
    this->press();
    EXPECT_TRUE(untilTrue([&] { return presses == 1; }));
    this->press();
    EXPECT_TRUE(untilTrue([&] { return presses == 2; }));
}

TYPED_TEST_P(StatusItemContract, TellsTheNewestObserverOnly) {
    int former = 0;
    int newest = 0;
    this->press();
    this->item().setActivationObserver([&former] { ++former; });
    this->item().setActivationObserver([&newest] { ++newest; });
    this->press();
    EXPECT_TRUE(untilTrue([&] { return newest > 0; }));
    EXPECT_EQ(former, 0);
}

REGISTER_TYPED_TEST_SUITE_P(StatusItemContract, HasAPlace, TellsOfEveryPress, TellsTheNewestObserverOnly);
