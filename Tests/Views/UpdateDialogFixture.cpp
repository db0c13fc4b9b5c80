#include "Views/UpdateDialogFixture.h"

UpdateDialogFixture::UpdateDialogFixture(QObject *parent)
    : QObject(parent)
    , m_model(m_prompt, m_settings.store, QStringLiteral("1.0"),
          [this](const FileURL &file) { note(file.path()); }) {
    m_settings.store.setUiLanguage(AppLanguage::English);
    connect(&m_prompt, &UpdatePrompt::downloadRequested, this, [this] { note(QStringLiteral("download")); });
    connect(&m_prompt, &UpdatePrompt::retryRequested, this, [this] { note(QStringLiteral("retry")); });
    connect(&m_prompt, &UpdatePrompt::dismissed, this, [this] { note(QStringLiteral("dismiss")); });
}

void UpdateDialogFixture::find(const QString &version, const QString &notes) {
    AppcastItem item;
    item.displayVersion = version;
    item.releaseNotes = notes;
    m_prompt.showFound(item);
}

void UpdateDialogFixture::download(double share) {
    m_prompt.showDownloading();
    m_prompt.showProgress(share);
}

void UpdateDialogFixture::note(const QString &answer) {
    m_answers.append(answer);
    Q_EMIT answersChanged();
}
