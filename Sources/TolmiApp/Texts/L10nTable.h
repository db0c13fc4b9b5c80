#pragma once

#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Texts/L10nKeys.h"

#include <QStringView>

#include <array>

namespace L10n {

inline constexpr std::size_t textCount = keyCount + phraseCount;
inline constexpr std::size_t languageCount = appLanguageCodes.size();

/// The texts of each language: those of the keys, then those of the phrases. A text that is not there is
/// null.
using Table = std::array<std::array<QStringView, textCount>, languageCount>;

/// The names of the keys and phrases.
extern const std::array<QLatin1String, textCount> names;

/// The English names of the languages.
extern const std::array<QStringView, languageCount> languageNames;

/// Every text.
extern const Table table;

/// The texts that name a key or a place which Linux calls otherwise, as they are worded there.
extern const Table linuxTable;

/// The text at `place` in `language`, or else in English; null where there is neither.
QStringView find(const Table &table, std::size_t place, AppLanguage language);

/// `pattern` with the values in the places of `%1` to `%9`.
QString filled(QStringView pattern, const QStringList &values);

} // namespace L10n
