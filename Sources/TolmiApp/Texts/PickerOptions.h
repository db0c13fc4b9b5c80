#pragma once

#include "TolmiApp/Settings/AppLanguage.h"

#include <QVariant>

/// The rows of pickers, as StudioPicker takes them: objects with a `value` and a `text`, and perhaps a
/// `symbol`.
namespace PickerOptions {

QVariantMap option(const QString &value, const QString &text);

/// The given cases by their stored texts, named in `language`.
template <typename Cases, typename Name>
QVariantList of(const Cases &cases, Name name, AppLanguage language) {
    QVariantList options;
    for (const auto value : cases)
        options.append(option(rawValue(value), name(value, language)));
    return options;
}

/// The languages that one can choose to speak, as codes.
QVariantList transcriptionLanguages(AppLanguage language);

} // namespace PickerOptions
