#pragma once

#include "TolmiApp/Settings/AppLanguages.h"
#include "TolmiApp/Settings/RawValue.h"

/// The interface languages: those with a file of texts. Stored strings match case-insensitively.
template <>
struct RawValues<AppLanguage> {
    static constexpr auto table = appLanguageCodes;
    static constexpr AppLanguage fallback = AppLanguage::Romanian;
    static constexpr bool matchesAnyCase = true;
};
