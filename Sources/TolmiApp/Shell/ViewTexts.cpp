#include "TolmiApp/Shell/ViewTexts.h"

#include "TolmiApp/Settings/SettingsStore.h"

ViewTexts::ViewTexts(const SettingsStore &settings, PlatformTexts texts, QObject *parent)
    : QQmlPropertyMap(this, parent)
    , m_settings(settings)
    , m_texts(texts) {
    connect(&settings, &SettingsStore::uiLanguageChanged, this, [this] { renew(); });
    renew();
}

QString ViewTexts::labelled(const QString &name, const QString &value) const {
    return m_texts.text(L10n::Phrase::labelled, m_settings.uiLanguage(), { name, value });
}

void ViewTexts::renew() {
    const AppLanguage language = m_settings.uiLanguage();
    QVariantHash texts;
    for (const L10n::Key key : L10n::allKeys())
        texts.insert(L10n::rawValue(key), m_texts.text(key, language));
    texts.insert(QStringLiteral("settingsShortcut"), m_texts.text(L10n::Phrase::settingsShortcut, language));
    texts.insert(QStringLiteral("quitShortcut"), m_texts.text(L10n::Phrase::quitShortcut, language));
    insert(texts);
}
