#include "TolmiApp/Shell/ViewTexts.h"

#include "TolmiApp/Settings/SettingsStore.h"

#include <QMetaEnum>

ViewTexts::ViewTexts(const SettingsStore &settings, PlatformTexts texts, QObject *parent)
    : QQmlPropertyMap(this, parent)
    , m_settings(settings)
    , m_texts(std::move(texts)) {
    insert(QStringLiteral("settingsShortcut"), m_texts.settingsShortcut());
    insert(QStringLiteral("quitShortcut"), m_texts.quitShortcut());
    connect(&settings, &SettingsStore::uiLanguageChanged, this, [this] { renew(); });
    renew();
}

void ViewTexts::renew() {
    const auto keys = QMetaEnum::fromType<L10n::Key>();
    QVariantHash texts;
    for (int index = 0; index < keys.keyCount(); ++index) {
        const auto key = L10n::Key(keys.value(index));
        texts.insert(QString::fromLatin1(keys.key(index)), m_texts.text(key, m_settings.uiLanguage()));
    }
    insert(texts);
}
