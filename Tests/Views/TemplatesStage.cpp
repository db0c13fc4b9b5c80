#include "Views/TemplatesStage.h"

TemplatesStage::TemplatesStage() {
    m_settings.store.setUiLanguage(AppLanguage::English);
}

void TemplatesStage::choose(const QString &refinedText, const QString &rawText) {
    m_history.add({ .rawText = rawText, .refinedText = refinedText, .language = QStringLiteral("en") });
    m_selection.setSelectedHistoryEntryID(m_history.entries().first().id);
}

void TemplatesStage::speak(const QString &language) {
    m_settings.store.setUiLanguage(rawValueOrDefault<AppLanguage>(language));
}

QString TemplatesStage::clipboard() const {
    return m_pasteboard.content.empty()
        ? QString()
        : QString::fromUtf8(m_pasteboard.content.front().representations.front().second);
}
