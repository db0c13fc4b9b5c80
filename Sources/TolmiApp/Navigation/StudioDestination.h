#pragma once

#include "TolmiApp/Texts/L10n.h"

/// The workspaces of the Studio, in the order of its sidebar.
enum class StudioDestination {
    CommandCenter,
    Profile,
    DictationLive,
    History,
    Templates,
    Health,
    Settings,
};

template <>
struct RawValues<StudioDestination> {
    static constexpr std::array table {
        std::pair { StudioDestination::CommandCenter, QLatin1String("commandCenter") },
        std::pair { StudioDestination::Profile, QLatin1String("profile") },
        std::pair { StudioDestination::DictationLive, QLatin1String("dictationLive") },
        std::pair { StudioDestination::History, QLatin1String("history") },
        std::pair { StudioDestination::Templates, QLatin1String("templates") },
        std::pair { StudioDestination::Health, QLatin1String("health") },
        std::pair { StudioDestination::Settings, QLatin1String("settings") },
    };
    static constexpr StudioDestination fallback = StudioDestination::CommandCenter;
};

/// The text that names a workspace.
constexpr L10n::Key titleKey(StudioDestination destination) {
    switch (destination) {
    case StudioDestination::CommandCenter:
        return L10n::Key::routeCommandCenter;
    case StudioDestination::Profile:
        return L10n::Key::routeProfile;
    case StudioDestination::DictationLive:
        return L10n::Key::routeDictationLive;
    case StudioDestination::History:
        return L10n::Key::routeHistory;
    case StudioDestination::Templates:
        return L10n::Key::routeTemplates;
    case StudioDestination::Health:
        return L10n::Key::routeHealth;
    case StudioDestination::Settings:
        return L10n::Key::routeSettings;
    }
    Q_UNREACHABLE();
}

/// The name of a workspace.
inline QString title(StudioDestination destination, AppLanguage language) {
    return L10n::text(titleKey(destination), language);
}

/// The symbol of a workspace.
constexpr QLatin1String icon(StudioDestination destination) {
    switch (destination) {
    case StudioDestination::CommandCenter:
        return QLatin1String("command.circle");
    case StudioDestination::Profile:
        return QLatin1String("person.crop.circle");
    case StudioDestination::DictationLive:
        return QLatin1String("waveform.circle");
    case StudioDestination::History:
        return QLatin1String("clock.arrow.circlepath");
    case StudioDestination::Templates:
        return QLatin1String("wand.and.stars");
    case StudioDestination::Health:
        return QLatin1String("stethoscope");
    case StudioDestination::Settings:
        return QLatin1String("gearshape");
    }
    Q_UNREACHABLE();
}
