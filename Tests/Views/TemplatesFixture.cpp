#include "Views/TemplatesFixture.h"

TemplatesFixture::TemplatesFixture() {
    m_settings.store.setUiLanguage(AppLanguage::English);
}

void TemplatesFixture::choose(const QString &refinedText, const QString &rawText) {
    m_history.add({ .rawText = rawText, .refinedText = refinedText, .language = QStringLiteral("en") });
    m_selection.setSelectedHistoryEntryID(m_history.entries().first().id);
}

void TemplatesFixture::speak(const QString &language) {
    m_settings.store.setUiLanguage(rawValueOrDefault<AppLanguage>(language));
}

QString TemplatesFixture::clipboard() const {
    return m_pasteboard.content.empty()
        ? QString()
        : QString::fromUtf8(m_pasteboard.content.front().representations.front().second);
}
