#pragma once

#include "TolmiApp/Texts/L10n.h"

#include <QStringView>

#include <array>

namespace L10n {

/// One text in both languages.
struct Row {
    Key key;
    QStringView english;
    QStringView romanian;
};

inline constexpr size_t keyCount = 263;

/// The row of every key, at the place that the key's declaration gives.
extern const std::array<Row, keyCount> table;

/// The row's text in `language`.
QString text(const Row &row, AppLanguage language);

} // namespace L10n
