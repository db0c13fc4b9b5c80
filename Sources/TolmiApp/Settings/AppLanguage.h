#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The languages of the interface. Stored texts match in any case.
enum class AppLanguage {
    Romanian,
    English,
};

template <>
struct RawValues<AppLanguage> {
    static constexpr std::array table {
        std::pair { AppLanguage::Romanian, QLatin1String("ro") },
        std::pair { AppLanguage::English, QLatin1String("en") },
    };
    static constexpr AppLanguage fallback = AppLanguage::Romanian;
    static constexpr bool matchesAnyCase = true;
};
