#pragma once

#include "TolmiApp/Settings/AppLanguage.h"

#include <QVariant>

/// Picker options in the form StudioPicker expects: objects with `value`, `text` and an optional `symbol`.
namespace PickerOptions {

QVariantMap option(const QString &value, const QString &text);

/// The given cases with their stored strings, named in `language`.
template <typename Cases, typename Name>
QVariantList of(const Cases &cases, Name name, AppLanguage language) {
    QVariantList options;
    for (const auto value : cases)
        options.append(option(rawValue(value), name(value, language)));
    return options;
}

/// The available spoken languages by code.
QVariantList transcriptionLanguages(AppLanguage language);

} // namespace PickerOptions
