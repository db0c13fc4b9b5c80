#include "TolmiApp/Dictation/DictationKeySources.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {
/// "a" is a press by the source a, "A" its release.
struct SourcesCase {
    const char *name;
    std::string events;
    /// The events that count.
    std::string counted;
};

bool apply(DictationKeySources &sources, char event) {
    const bool isPress = event >= 'a';
    const DictationKeySources::Source source(QLatin1Char(isPress ? event : char(event - 'A' + 'a')));
    return isPress ? sources.press(source) : sources.release(source);
}

class DictationKeySourcesTests : public testing::TestWithParam<SourcesCase> { };

TEST_P(DictationKeySourcesTests, CountTheOwnersEvents) {
    DictationKeySources sources;
    std::string counted;
    for (const char event : GetParam().events) {
        if (apply(sources, event))
            counted += event;
    }
    EXPECT_EQ(counted, GetParam().counted);
}

INSTANTIATE_TEST_SUITE_P(Table, DictationKeySourcesTests,
    testing::Values(SourcesCase { "onePress", "aA", "aA" },
        SourcesCase { "oneAfterTheOther", "aAbB", "aAbB" }, SourcesCase { "repeatedPress", "aaaA", "aA" },
        SourcesCase { "repeatedRelease", "aAAA", "aA" }, SourcesCase { "releaseWithoutPress", "A", "" },
        SourcesCase { "otherWithinThePress", "abBA", "aA" },
        SourcesCase { "otherOutlastsThePress", "abABbB", "aAbB" },
        SourcesCase { "otherIsStillDownWhenTheFirstPressesAgain", "abAaBA", "aAaA" },
        SourcesCase { "strangersRelease", "aBA", "aA" }, SourcesCase { "three", "abcBCAcaCA", "aAcC" }),
    [](const auto &info) { return info.param.name; });

TEST(DictationKeySourcesOwner, IsWhoPressedFirst) {
    DictationKeySources sources;
    EXPECT_FALSE(sources.owner());
    apply(sources, 'a');
    apply(sources, 'b');
    EXPECT_EQ(sources.owner(), QStringLiteral("a"));
    apply(sources, 'A');
    EXPECT_FALSE(sources.owner());
}

// Whatever the order, presses and releases that count take turns, and once all sources are up nobody holds
// the key.
TEST(DictationKeySourcesOwner, NeverDoublesOrStrandsAPress) {
    std::mt19937 random(7);
    DictationKeySources sources;
    std::set<char> down;
    bool isKeyDown = false;
    for (int step = 0; step < 100000; ++step) {
        const char source = char('a' + random() % 5);
        const bool isPress = down.insert(source).second;
        if (!isPress)
            down.erase(source);
        if (apply(sources, isPress ? source : char(source - 'a' + 'A'))) {
            ASSERT_NE(isKeyDown, isPress) << "step " << step;
            isKeyDown = isPress;
        }
        ASSERT_EQ(isKeyDown, sources.owner().has_value()) << "step " << step;
        if (down.empty()) {
            ASSERT_FALSE(isKeyDown) << "step " << step;
        }
    }
}
} // namespace
