#pragma once

#include <QString>

#include <compare>

/// Orders two versions.
///
/// A version is a sequence of numbers with any separators and an optional pre-release suffix: "1.10" is newer
/// than "1.9", "1.0" equals "1.0.0", "1.0-beta2" is older than "1.0-rc1" and both are older than "1.0". In
/// the suffix numbers compare by value and precede words, and a longer suffix is newer. Case, a leading "v"
/// and everything after a "+" are ignored. An empty version is 0.
std::weak_ordering compareVersions(const QString &left, const QString &right);
