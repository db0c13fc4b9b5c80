#include "TolmiApp/Popup/PopupPlacement.h"

#include <gtest/gtest.h>

namespace {

struct PlacementCase {
    const char *what;
    QRect anchor;
    QRect screen;
    QPoint expected;
};

constexpr QSize size(320, 500);
constexpr QRect screen(0, 30, 1920, 1050);

class PopupPlacementTest : public testing::TestWithParam<PlacementCase> { };

} // namespace

TEST_P(PopupPlacementTest, StandsAtItsAnchorAndOnTheScreen) {
    const PlacementCase &each = GetParam();
    EXPECT_EQ(PopupPlacement::origin(each.anchor, size, each.screen), each.expected) << each.what;
}

INSTANTIATE_TEST_SUITE_P(Anchors, PopupPlacementTest,
    testing::Values(
        PlacementCase { "under an item of a panel above", { 1000, 2, 24, 24 }, screen, { 852, 38 } },
        PlacementCase { "in the upper right corner", { 1890, 2, 24, 24 }, screen, { 1592, 38 } },
        PlacementCase { "in the upper left corner", { 0, 2, 24, 24 }, screen, { 8, 38 } },
        PlacementCase {
            "over an item of a panel below", { 1000, 1052, 24, 24 }, { 0, 0, 1920, 1050 }, { 852, 542 } },
        PlacementCase {
            "in the lower right corner", { 1896, 1052, 24, 24 }, { 0, 0, 1920, 1080 }, { 1592, 546 } },
        PlacementCase { "under the pointer", { 700, 300, 1, 1 }, screen, { 541, 307 } },
        PlacementCase { "over the pointer", { 700, 900, 1, 1 }, screen, { 541, 394 } },
        PlacementCase { "under the pointer where there is too little room", { 700, 490, 1, 1 },
            { 0, 0, 1920, 1002 }, { 541, 494 } },
        PlacementCase { "on a second screen", { 2000, 5, 20, 20 }, { 1920, 0, 1280, 1024 }, { 1928, 31 } },
        PlacementCase {
            "on a screen left of the first", { -30, 5, 20, 20 }, { -1280, 0, 1280, 1024 }, { -328, 31 } },
        PlacementCase { "on a screen that is too small", { 100, 5, 20, 20 }, { 0, 0, 300, 400 }, { 8, 8 } }));
