#pragma once

#include "Text/Text.h"

#include <QLatin1String>
#include <QString>

#include <array>
#include <optional>
#include <utility>

/// The stored strings of an enumeration, in display order. Specialised next to each stored enumeration, with
/// a static array `table` and the case `fallback` for unknown strings. A static member `matchesAnyCase` makes
/// reading case-insensitive.
template <typename Enum>
struct RawValues;

/// The stored string of a case.
template <typename Enum>
QString rawValue(Enum value) {
    for (const auto &[known, text] : RawValues<Enum>::table) {
        if (known == value)
            return text;
    }
    Q_UNREACHABLE();
}

/// The case with exactly this stored string, if any.
template <typename Enum>
std::optional<Enum> caseOfRawValue(const QString &text) {
    for (const auto &[known, knownText] : RawValues<Enum>::table) {
        if (text == knownText)
            return known;
    }
    return std::nullopt;
}

/// The case with this stored string, or the enumeration's fallback. Never fails.
template <typename Enum>
Enum rawValueOrDefault(const QString &text) {
    if constexpr (requires { RawValues<Enum>::matchesAnyCase; })
        return caseOfRawValue<Enum>(Text::lowerCased(text)).value_or(RawValues<Enum>::fallback);
    else
        return caseOfRawValue<Enum>(text).value_or(RawValues<Enum>::fallback);
}

/// All cases in order.
template <typename Enum>
auto allCases() {
    std::array<Enum, RawValues<Enum>::table.size()> cases {};
    for (size_t index = 0; index < cases.size(); ++index)
        cases[index] = RawValues<Enum>::table[index].first;
    return cases;
}
