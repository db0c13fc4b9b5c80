#include "TolmiApp/Texts/PlatformTexts.h"

#include "TolmiApp/Texts/L10nTable.h"

QString PlatformTexts::text(L10n::Key key, AppLanguage language) const {
    return find(std::size_t(key), language).toString();
}

QString PlatformTexts::text(L10n::Phrase phrase, AppLanguage language, const QStringList &values) const {
    return L10n::filled(find(std::size_t(phrase), language), values);
}

QStringView PlatformTexts::find(std::size_t place, AppLanguage language) const {
    const QStringView onLinux = L10n::find(L10n::linuxTable, place, language);
    return m_desktop == Desktop::MacOS || onLinux.isNull() ? L10n::find(L10n::table, place, language)
                                                           : onLinux;
}
