#include "TolmiApp/Profile/ProfileReadinessScorer.h"

#include <gtest/gtest.h>

namespace {
using Item = ProfileReadinessItem;
using Items = std::vector<Item>;

const QString person = QStringLiteral("person.crop.circle.fill");

ProfileReadinessInput nothingDone() {
    return { .profileDisplayName = QStringLiteral("User"),
        .profileAvatarID = person,
        .hasCustomAvatar = false,
        .microphoneGranted = false,
        .accessibilityGranted = false,
        .hasSuccessfulDictationTest = false };
}

/// A user who has come as far as the bits of `done` say, the first item in the lowest bit.
ProfileReadinessInput input(unsigned done) {
    ProfileReadinessInput input = nothingDone();
    if (done & 1)
        input.profileDisplayName = QStringLiteral("Ana");
    input.hasCustomAvatar = done & 2;
    input.microphoneGranted = done & 4;
    input.accessibilityGranted = done & 8;
    input.hasSuccessfulDictationTest = done & 16;
    return input;
}

struct NameCase {
    const char *name;
    bool isPersonalized;
};

class DisplayNames : public testing::TestWithParam<NameCase> { };

INSTANTIATE_TEST_SUITE_P(ProfileReadinessScorer, DisplayNames,
    testing::Values(NameCase { "User", false }, NameCase { "USER", false }, NameCase { "uSeR", false },
        NameCase { "  user\n", false }, NameCase { "", false }, NameCase { "   ", false },
        NameCase { "\t\r\n", false }, NameCase { "Ana", true }, NameCase { "  Ana   Maria  ", true },
        NameCase { "Users", true }, NameCase { "Us er", true }, NameCase { "User 2", true },
        NameCase { "Ștefan", true },
        NameCase { "A name that is a good deal longer than forty letters", true },
        // The first forty characters decide.
        NameCase { "User                                       x", true }));

TEST_P(DisplayNames, ArePersonalizedUnlessTheyAreTheDefault) {
    const QString name = QString::fromUtf8(GetParam().name);
    EXPECT_EQ(ProfileReadinessScorer::isPersonalizedDisplayName(name), GetParam().isPersonalized)
        << GetParam().name;
}

struct AvatarCase {
    const char *id;
    bool hasCustomAvatar;
    bool isPersonalized;
};

class Avatars : public testing::TestWithParam<AvatarCase> { };

INSTANTIATE_TEST_SUITE_P(ProfileReadinessScorer, Avatars,
    testing::Values(AvatarCase { "person.crop.circle.fill", false, false }, AvatarCase { "", false, false },
        AvatarCase { "unknown", false, false }, AvatarCase { "SPARKLES", false, false },
        AvatarCase { "sparkles", false, true }, AvatarCase { "briefcase.circle.fill", false, true },
        AvatarCase { "waveform.circle.fill", false, true },
        AvatarCase { "person.crop.circle.fill", true, true }, AvatarCase { "unknown", true, true }));

TEST_P(Avatars, ArePersonalizedByAPictureOrAnotherPreset) {
    EXPECT_EQ(ProfileReadinessScorer::isPersonalizedAvatar(
                  QString::fromUtf8(GetParam().id), GetParam().hasCustomAvatar),
        GetParam().isPersonalized);
}
} // namespace

TEST(ProfileReadinessScorer, FindsNothingMissingWhenAllIsDone) {
    EXPECT_EQ(ProfileReadinessScorer::score(input(31)), (ProfileReadinessResult { 100, {}, {} }));
}

TEST(ProfileReadinessScorer, ListsAllInBothOrdersWhenNothingIsDone) {
    const Items inOrder { Item::DisplayName, Item::Avatar, Item::Microphone, Item::Accessibility,
        Item::DictationTest };
    const Items byPriority { Item::Microphone, Item::Accessibility, Item::DictationTest, Item::DisplayName,
        Item::Avatar };
    EXPECT_EQ(
        ProfileReadinessScorer::score(nothingDone()), (ProfileReadinessResult { 0, inOrder, byPriority }));
}

TEST(ProfileReadinessScorer, ScoresAUserWithNothingButTheMicrophone) {
    ProfileReadinessInput input = nothingDone();
    input.microphoneGranted = true;
    const Items missing { Item::DisplayName, Item::Avatar, Item::Accessibility, Item::DictationTest };
    const Items recommendations { Item::Accessibility, Item::DictationTest, Item::DisplayName, Item::Avatar };
    EXPECT_EQ(
        ProfileReadinessScorer::score(input), (ProfileReadinessResult { 20, missing, recommendations }));
}

TEST(ProfileReadinessScorer, GivesTwentyForEachItemWhateverTheOthers) {
    const auto items = allCases<Item>();
    for (unsigned done = 0; done < 32; ++done) {
        const ProfileReadinessResult result = ProfileReadinessScorer::score(input(done));
        Items missing;
        for (size_t index = 0; index < items.size(); ++index) {
            if (!(done >> index & 1))
                missing.push_back(items[index]);
        }
        EXPECT_EQ(result.missingItems, missing) << done;
        EXPECT_EQ(result.score, 100 - 20 * int(missing.size())) << done;
        EXPECT_TRUE(std::is_permutation(
            missing.begin(), missing.end(), result.recommendations.begin(), result.recommendations.end()))
            << done;
    }
}

TEST(ProfileReadinessScorer, CountsAnOwnPictureBesideTheDefaultPreset) {
    ProfileReadinessInput input = nothingDone();
    input.hasCustomAvatar = true;
    EXPECT_EQ(ProfileReadinessScorer::score(input).score, 20);
}

TEST(ProfileReadinessScorer, KnowsItsItemsByTheirStoredTexts) {
    const QStringList expected { "displayName", "avatar", "microphone", "accessibility", "dictationTest" };
    QStringList texts;
    for (const Item item : allCases<Item>()) {
        texts.append(rawValue(item));
        EXPECT_EQ(caseOfRawValue<Item>(texts.last()), item);
    }
    EXPECT_EQ(texts, expected);
}
