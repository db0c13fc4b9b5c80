#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The avatars that come with the program; the stored text is the name of the symbol that draws each.
enum class ProfileAvatarPreset {
    Person,
    Work,
    Spark,
    Voice,
};

template <>
struct RawValues<ProfileAvatarPreset> {
    static constexpr std::array table {
        std::pair { ProfileAvatarPreset::Person, QLatin1String("person.crop.circle.fill") },
        std::pair { ProfileAvatarPreset::Work, QLatin1String("briefcase.circle.fill") },
        std::pair { ProfileAvatarPreset::Spark, QLatin1String("sparkles") },
        std::pair { ProfileAvatarPreset::Voice, QLatin1String("waveform.circle.fill") },
    };
    static constexpr ProfileAvatarPreset fallback = ProfileAvatarPreset::Person;
};

/// The stored text of the preset that `text` names, or of the default preset for any unknown text.
inline QString normalizedProfileAvatarID(const QString &text) {
    return rawValue(rawValueOrDefault<ProfileAvatarPreset>(text));
}
