#include "TolmiApp/Profile/ProfileReadinessScorer.h"

#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/ProfileDisplayName.h"

#include <algorithm>

namespace {
using Item = ProfileReadinessItem;
using Items = std::vector<Item>;

constexpr std::array itemWeights {
    std::pair { Item::DisplayName, 20 },
    std::pair { Item::Avatar, 20 },
    std::pair { Item::Microphone, 20 },
    std::pair { Item::Accessibility, 20 },
    std::pair { Item::DictationTest, 20 },
};

/// Nothing works without the permissions; the cosmetic items come last.
constexpr std::array recommendationPriority {
    Item::Microphone,
    Item::Accessibility,
    Item::DictationTest,
    Item::DisplayName,
    Item::Avatar,
};

bool contains(const Items &items, Item item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

bool isComplete(Item item, const ProfileReadinessInput &input) {
    switch (item) {
    case Item::DisplayName:
        return ProfileReadinessScorer::isPersonalizedDisplayName(input.profileDisplayName);
    case Item::Avatar:
        return ProfileReadinessScorer::isPersonalizedAvatar(input.profileAvatarID, input.hasCustomAvatar);
    case Item::Microphone:
        return input.microphoneGranted;
    case Item::Accessibility:
        return input.accessibilityGranted;
    case Item::DictationTest:
        return input.hasSuccessfulDictationTest;
    }
    Q_UNREACHABLE();
}
} // namespace

namespace ProfileReadinessScorer {

ProfileReadinessResult score(const ProfileReadinessInput &input) {
    ProfileReadinessResult result;
    for (const Item item : allCases<Item>()) {
        if (!isComplete(item, input))
            result.missingItems.push_back(item);
    }
    for (const Item item : recommendationPriority) {
        if (contains(result.missingItems, item))
            result.recommendations.push_back(item);
    }
    int sum = 0;
    for (const auto &[item, weight] : itemWeights)
        sum += contains(result.missingItems, item) ? 0 : weight;
    // The weights may change.
    result.score = std::clamp(sum, 0, 100);
    return result;
}

bool isPersonalizedDisplayName(const QString &name) {
    return sanitizedProfileDisplayName(name).compare(defaultProfileDisplayName, Qt::CaseInsensitive) != 0;
}

bool isPersonalizedAvatar(const QString &profileAvatarID, bool hasCustomAvatar) {
    const QString standard = rawValue(RawValues<ProfileAvatarPreset>::fallback);
    return hasCustomAvatar || normalizedProfileAvatarID(profileAvatarID) != standard;
}

} // namespace ProfileReadinessScorer
