#pragma once

#include "TolmiApp/Settings/AppLanguages.h"
#include "TolmiApp/Settings/RawValue.h"

/// The languages of the interface: those that have a file of texts. Stored texts match in any case.
template <>
struct RawValues<AppLanguage> {
    static constexpr auto table = appLanguageCodes;
    static constexpr AppLanguage fallback = AppLanguage::Romanian;
    static constexpr bool matchesAnyCase = true;
};
