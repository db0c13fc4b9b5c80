#include "TolmiApp/History/RowDifference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>

// GoogleTest finds these by their names.
static void PrintTo(const RowRun &run, std::ostream *stream) {
    *stream << run.count << " from " << run.first;
}
static void PrintTo(const RowMove &move, std::ostream *stream) {
    *stream << move.from << " to " << move.to;
}

namespace {
/// Rows are letters: the same letter is the same row, and a capital one is changed.
std::vector<NewRow> newRowsOf(const std::u32string &before, const std::u32string &after) {
    std::vector<NewRow> rows;
    for (const char32_t letter : after) {
        const bool isChanged = letter >= U'A' && letter <= U'Z';
        const size_t found = before.find(isChanged ? letter - U'A' + U'a' : letter);
        rows.push_back({ found == std::u32string::npos ? -1 : int(found), isChanged });
    }
    return rows;
}

RowDifference between(const std::u32string &before, const std::u32string &after) {
    return rowDifference(int(before.size()), newRowsOf(before, after));
}

/// `before` after each step of the difference was done to it; what comes is taken from `after`.
std::u32string applied(
    const RowDifference &difference, const std::u32string &before, const std::u32string &after) {
    std::u32string rows = before;
    for (const RowRun &run : difference.removals) {
        EXPECT_LE(size_t(run.first + run.count), rows.size());
        rows.erase(size_t(run.first), size_t(run.count));
    }
    if (difference.move) {
        const char32_t moved = rows.at(size_t(difference.move->from));
        rows.erase(size_t(difference.move->from), 1);
        rows.insert(size_t(difference.move->to), 1, moved);
    }
    for (const RowRun &run : difference.insertions) {
        EXPECT_LE(size_t(run.first), rows.size());
        rows.insert(size_t(run.first), after, size_t(run.first), size_t(run.count));
    }
    for (const int row : difference.changes)
        rows.at(size_t(row)) = after.at(size_t(row));
    return rows;
}

struct Difference {
    const char *name;
    std::u32string before;
    std::u32string after;
    RowDifference expected;
};

class RowDifferenceSteps : public testing::TestWithParam<Difference> { };
} // namespace

TEST_P(RowDifferenceSteps, AreFew) {
    const auto &[name, before, after, expected] = GetParam();
    const RowDifference difference = between(before, after);
    EXPECT_EQ(difference.removals, expected.removals);
    EXPECT_EQ(difference.move, expected.move);
    EXPECT_EQ(difference.insertions, expected.insertions);
    EXPECT_EQ(difference.changes, expected.changes);
    EXPECT_EQ(applied(difference, before, after), after);
}

INSTANTIATE_TEST_SUITE_P(App, RowDifferenceSteps,
    testing::Values(Difference { "bothEmpty", U"", U"", {} }, Difference { "equal", U"abc", U"abc", {} },
        Difference { "first", U"", U"abc", { .insertions = { { 0, 3 } } } },
        Difference { "allGo", U"abc", U"", { .removals = { { 0, 3 } } } },
        Difference { "comesInFront", U"abc", U"nabc", { .insertions = { { 0, 1 } } } },
        Difference { "comesAtTheEnd", U"abc", U"abcn", { .insertions = { { 3, 1 } } } },
        Difference { "goesInFront", U"abc", U"bc", { .removals = { { 0, 1 } } } },
        Difference { "goesAtTheEnd", U"abc", U"ab", { .removals = { { 2, 1 } } } },
        Difference { "movesUp", U"abcde", U"dabce", { .move = RowMove { 3, 0 } } },
        Difference { "movesDown", U"abcde", U"bcdae", { .move = RowMove { 0, 3 } } },
        Difference { "neighboursChangePlaces", U"abcd", U"acbd", { .move = RowMove { 2, 1 } } },
        Difference { "runsGo", U"abcdefg", U"adg", { .removals = { { 4, 2 }, { 1, 2 } } } },
        Difference { "runsCome", U"adg", U"abcdefg", { .insertions = { { 1, 2 }, { 4, 2 } } } },
        Difference { "goMoveAndCome", U"abcdef", U"xeacyf",
            { .removals = { { 3, 1 }, { 1, 1 } },
                .move = RowMove { 2, 0 },
                .insertions = { { 0, 1 }, { 4, 1 } } } },
        Difference {
            "nothingStays", U"abc", U"xy", { .removals = { { 0, 3 } }, .insertions = { { 0, 2 } } } },
        Difference { "twoMovesAreABlock", U"abcdef", U"acbedf",
            { .removals = { { 1, 4 } }, .insertions = { { 1, 4 } } } },
        Difference { "changes", U"abc", U"aBC", { .changes = { 1, 2 } } },
        Difference { "changesAndMoves", U"abc", U"Cab", { .move = RowMove { 2, 0 }, .changes = { 0 } } },
        Difference { "whatComesIsNoChange", U"ab", U"abX", { .insertions = { { 2, 1 } } } }),
    [](const auto &row) { return std::string(row.param.name); });

namespace {
/// Every second of that many rows.
std::u32string everySecondOf(int count) {
    std::u32string rows;
    for (int row = 0; row < count; row += 2)
        rows += char32_t(0x1000 + row);
    return rows;
}

std::u32string rowsUpTo(int count) {
    std::u32string rows;
    for (int row = 0; row < count; ++row)
        rows += char32_t(0x1000 + row);
    return rows;
}
} // namespace

TEST(RowDifferences, UpToSixtyFourRunsAreSingleSteps) {
    EXPECT_EQ(between(rowsUpTo(128), everySecondOf(128)).removals.size(), 64U);
    EXPECT_EQ(between(everySecondOf(128), rowsUpTo(128)).insertions.size(), 64U);
}

TEST(RowDifferences, MoreRunsAreOneBlock) {
    const RowDifference shrinking = between(rowsUpTo(130), everySecondOf(130));
    EXPECT_EQ(shrinking.removals, std::vector({ RowRun { 1, 129 } }));
    EXPECT_EQ(shrinking.insertions, std::vector({ RowRun { 1, 64 } }));
}

TEST(RowDifferences, LeadFromAnyListToAnyOther) {
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::u32string before = rowsUpTo(int(random() % 12));
        std::u32string after = before;
        if (round % 3 == 0)
            std::shuffle(after.begin(), after.end(), random);
        else if (!after.empty())
            std::swap(after[random() % after.size()], after[random() % after.size()]);
        const auto isLeftOut = [&random](char32_t) { return random() % 3 == 0; };
        std::erase_if(before, isLeftOut);
        std::erase_if(after, isLeftOut);
        ASSERT_EQ(applied(between(before, after), before, after), after) << "round " << round;
    }
}

TEST(RowDifferences, LeadFromAnyLongListToAnyOther) {
    std::mt19937 random(12);
    for (int round = 0; round < 100; ++round) {
        std::u32string before = rowsUpTo(400);
        std::u32string after = before;
        const size_t rarity = 2 + random() % 40;
        std::erase_if(before, [&](char32_t) { return random() % rarity == 0; });
        std::erase_if(after, [&](char32_t) { return random() % rarity == 0; });
        std::swap(after[0], after[random() % after.size()]);
        ASSERT_EQ(applied(between(before, after), before, after), after) << "round " << round;
    }
}
