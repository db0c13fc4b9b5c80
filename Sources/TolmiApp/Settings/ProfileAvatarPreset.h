#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The built-in avatars; the stored string is the name of the avatar's symbol.
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

/// The stored string of the preset that `text` names, or of the default preset for unknown strings.
inline QString normalizedProfileAvatarID(const QString &text) {
    return rawValue(rawValueOrDefault<ProfileAvatarPreset>(text));
}
