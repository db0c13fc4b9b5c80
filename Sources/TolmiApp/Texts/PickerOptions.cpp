#include "TolmiApp/Texts/PickerOptions.h"

#include "TolmiApp/Texts/L10n.h"

#include <array>

QVariantMap PickerOptions::option(const QString &value, const QString &text) {
    return { { QStringLiteral("value"), value }, { QStringLiteral("text"), text } };
}

QVariantList PickerOptions::transcriptionLanguages(AppLanguage language) {
    static constexpr std::array codes { u"ro", u"en", u"auto", u"es", u"fr", u"de", u"it", u"pt" };
    QVariantList options;
    for (const char16_t *const known : codes) {
        const QString code = QString::fromUtf16(known);
        options.append(option(code, L10n::transcriptionLanguageName(code, language)));
    }
    return options;
}
