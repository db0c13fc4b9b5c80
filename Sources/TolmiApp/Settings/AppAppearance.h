#pragma once

#include "Platform/Application.h"
#include "TolmiApp/Settings/RawValue.h"

/// The available appearances. Stored strings match case-insensitively; an unknown one means dark.
enum class AppAppearance {
    System,
    Light,
    Dark,
};

template <>
struct RawValues<AppAppearance> {
    static constexpr std::array table {
        std::pair { AppAppearance::System, QLatin1String("system") },
        std::pair { AppAppearance::Light, QLatin1String("light") },
        std::pair { AppAppearance::Dark, QLatin1String("dark") },
    };
    static constexpr AppAppearance fallback = AppAppearance::Dark;
    static constexpr bool matchesAnyCase = true;
};

/// The appearance forced on the windows; absent follows the system.
constexpr std::optional<Appearance> nsAppearance(AppAppearance appearance) {
    switch (appearance) {
    case AppAppearance::System:
        return std::nullopt;
    case AppAppearance::Light:
        return Appearance::Light;
    case AppAppearance::Dark:
        return Appearance::Dark;
    }
    Q_UNREACHABLE();
}
