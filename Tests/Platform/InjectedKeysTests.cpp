#include "Platform/Linux/X11/InjectedKeys.h"

#include <gtest/gtest.h>

namespace {
using namespace std::chrono_literals;

constexpr InjectedKeys::Instant start;

TEST(InjectedKeysTests, EachNoteServesOnce) {
    InjectedKeys keys;
    keys.willPress(55, start);
    keys.willPress(37, start);
    keys.willPress(55, start);
    EXPECT_TRUE(keys.take(55, start + 5ms));
    EXPECT_TRUE(keys.take(55, start + 5ms));
    EXPECT_FALSE(keys.take(55, start + 5ms));
    EXPECT_TRUE(keys.take(37, start + 5ms));
}

TEST(InjectedKeysTests, KeysOfTheUserAreNotOurs) {
    InjectedKeys keys;
    EXPECT_FALSE(keys.take(55, start));
    keys.willPress(55, start);
    EXPECT_FALSE(keys.take(38, start));
}

TEST(InjectedKeysTests, APressThatNobodySawIsForgotten) {
    InjectedKeys keys;
    keys.willPress(55, start);
    EXPECT_FALSE(keys.take(55, start + 1001ms));
}
} // namespace
