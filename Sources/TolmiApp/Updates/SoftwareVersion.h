#pragma once

#include <QString>

#include <compare>

/// Orders two versions.
///
/// A version is a row of numbers, whatever stands between them, and perhaps a name for what comes before the
/// release: "1.10" is newer than "1.9", "1.0" is "1.0.0", "1.0-beta2" is older than "1.0-rc1" and both are
/// older than "1.0". In that name numbers count as numbers, come before words, and a longer name is newer.
/// Capitals, a "v" in front and everything behind a "+" say nothing. An empty version is 0.
std::weak_ordering compareVersions(const QString &left, const QString &right);
