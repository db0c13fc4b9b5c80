#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The steps of the first-start wizard.
enum class OnboardingStep {
    Profile,
    Permissions,
    DictationTest,
    Completed,
};

template <>
struct RawValues<OnboardingStep> {
    static constexpr std::array table {
        std::pair { OnboardingStep::Profile, QLatin1String("profile") },
        std::pair { OnboardingStep::Permissions, QLatin1String("permissions") },
        std::pair { OnboardingStep::DictationTest, QLatin1String("dictationTest") },
        std::pair { OnboardingStep::Completed, QLatin1String("completed") },
    };
    static constexpr OnboardingStep fallback = OnboardingStep::Profile;
};
