#pragma once

#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Texts/L10nKeys.h"

#include <QStringView>

#include <array>

namespace L10n {

inline constexpr std::size_t textCount = keyCount + phraseCount;
inline constexpr std::size_t languageCount = appLanguageCodes.size();

/// The texts of each language: first the keys, then the phrases. Missing texts are null.
using Table = std::array<std::array<QStringView, textCount>, languageCount>;

/// The names of the keys and phrases.
extern const std::array<QLatin1String, textCount> names;

/// The English names of the languages.
extern const std::array<QStringView, languageCount> languageNames;

/// All texts.
extern const Table table;

/// Overrides for Linux, for texts that name a key or a location with another name there.
extern const Table linuxTable;

/// The text at `place` in `language`, else in English; null if there is neither.
QStringView find(const Table &table, std::size_t place, AppLanguage language);

/// `pattern` with the placeholders `%1` to `%9` replaced.
QString filled(QStringView pattern, const QStringList &values);

} // namespace L10n
