#pragma once

#include "TolmiApp/Settings/RawValue.h"

#include <vector>

/// What a user sets up, in the order of the checklist.
enum class ProfileReadinessItem {
    DisplayName,
    Avatar,
    Microphone,
    Accessibility,
    DictationTest,
};

template <>
struct RawValues<ProfileReadinessItem> {
    static constexpr std::array table {
        std::pair { ProfileReadinessItem::DisplayName, QLatin1String("displayName") },
        std::pair { ProfileReadinessItem::Avatar, QLatin1String("avatar") },
        std::pair { ProfileReadinessItem::Microphone, QLatin1String("microphone") },
        std::pair { ProfileReadinessItem::Accessibility, QLatin1String("accessibility") },
        std::pair { ProfileReadinessItem::DictationTest, QLatin1String("dictationTest") },
    };
};

/// The facts about a user's set-up.
struct ProfileReadinessInput {
    /// As stored.
    QString profileDisplayName;
    /// As stored.
    QString profileAvatarID;
    /// Whether the user's own picture is there.
    bool hasCustomAvatar;
    bool microphoneGranted;
    bool accessibilityGranted;
    /// Whether a dictation has succeeded.
    bool hasSuccessfulDictationTest;

    friend bool operator==(const ProfileReadinessInput &, const ProfileReadinessInput &) = default;
};

/// How far a user has come.
struct ProfileReadinessResult {
    /// 0 to 100.
    int score = 0;
    /// In the order of the checklist.
    std::vector<ProfileReadinessItem> missingItems;
    /// The missing items, the most pressing first.
    std::vector<ProfileReadinessItem> recommendations;

    friend bool operator==(const ProfileReadinessResult &, const ProfileReadinessResult &) = default;
};

/// Tells from plain facts how far a user has come in setting up.
namespace ProfileReadinessScorer {

/// The score and what is still to be done.
ProfileReadinessResult score(const ProfileReadinessInput &input);

/// Whether the user has given a name other than the default one, in any case.
bool isPersonalizedDisplayName(const QString &name);

/// Whether the user has a picture of their own or a preset other than the default one.
bool isPersonalizedAvatar(const QString &profileAvatarID, bool hasCustomAvatar);

} // namespace ProfileReadinessScorer
