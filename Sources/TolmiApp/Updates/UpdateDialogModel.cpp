#include "TolmiApp/Updates/UpdateDialogModel.h"

#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>
#include <cmath>

namespace {
using TextKey = UpdateTexts::Key;
using Phase = UpdatePrompt::Phase;

/// The words of one phase.
struct Words {
    TextKey title;
    std::optional<TextKey> hint;
    std::optional<TextKey> action;
    TextKey dismissal;
};

Words wordsOf(Phase phase) {
    switch (phase) {
    case Phase::Found:
        return { TextKey::foundTitle, TextKey::foundHint, TextKey::download, TextKey::later };
    case Phase::UpToDate:
        return { TextKey::upToDateTitle, TextKey::upToDateHint, std::nullopt, TextKey::close };
    case Phase::Failed:
        return { TextKey::failedTitle, TextKey::failedHint, TextKey::tryAgain, TextKey::close };
    case Phase::Downloading:
        return { TextKey::downloadingTitle, std::nullopt, std::nullopt, TextKey::cancel };
    case Phase::Downloaded:
        return { TextKey::downloadedTitle, TextKey::downloadedHint, TextKey::showInFolder, TextKey::close };
    case Phase::Hidden:
    case Phase::Checking:
        break;
    }
    return { TextKey::checkingTitle, std::nullopt, std::nullopt, TextKey::cancel };
}
} // namespace

UpdateDialogModel::UpdateDialogModel(
    UpdatePrompt &prompt, const SettingsStore &settings, QString installedVersion, ShowFile showFile)
    : m_prompt(prompt)
    , m_settings(settings)
    , m_installedVersion(std::move(installedVersion))
    , m_showFile(std::move(showFile)) {
    connect(&settings, &SettingsStore::uiLanguageChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::versionChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::releaseNotesChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::messageChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::filePathChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::progressChanged, this, &UpdateDialogModel::progressChanged);
    // The words first: whoever hears of the phase finds those that belong to it.
    connect(&prompt, &UpdatePrompt::phaseChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::phaseChanged, this, &UpdateDialogModel::phaseChanged);
}

QString UpdateDialogModel::text(TextKey key) const {
    return UpdateTexts::text(key, m_settings.uiLanguage());
}

QString UpdateDialogModel::text(TextKey key, const QString &version) const {
    return UpdateTexts::text(key, m_settings.uiLanguage(), version);
}

QString UpdateDialogModel::windowTitle() const {
    return text(TextKey::windowTitle);
}

QString UpdateDialogModel::title() const {
    return text(wordsOf(phase()).title, m_prompt.version());
}

QString UpdateDialogModel::problem() const {
    return phase() == Phase::Failed ? m_prompt.message() : QString();
}

QString UpdateDialogModel::hint() const {
    const std::optional<TextKey> key = wordsOf(phase()).hint;
    return key ? text(*key, m_installedVersion) : QString();
}

QString UpdateDialogModel::releaseNotes() const {
    return phase() == Phase::Found ? m_prompt.releaseNotes() : QString();
}

QString UpdateDialogModel::releaseNotesLabel() const {
    return text(TextKey::releaseNotes);
}

QString UpdateDialogModel::filePath() const {
    return phase() == Phase::Downloaded ? m_prompt.filePath() : QString();
}

QString UpdateDialogModel::filePathLabel() const {
    return text(TextKey::downloadedFile);
}

QString UpdateDialogModel::actionText() const {
    const std::optional<TextKey> key = wordsOf(phase()).action;
    return key ? text(*key) : QString();
}

QString UpdateDialogModel::dismissText() const {
    return text(wordsOf(phase()).dismissal);
}

double UpdateDialogModel::progress() const {
    return std::clamp(m_prompt.progress(), 0.0, 1.0);
}

QString UpdateDialogModel::progressText() const {
    return QString::number(std::floor(progress() * 100)) + QStringLiteral(" %");
}

QString UpdateDialogModel::progressLabel() const {
    return text(TextKey::downloadProgress);
}

void UpdateDialogModel::act() {
    // Each answer may change the phase at once, so only one of them is given.
    if (phase() == Phase::Downloaded)
        m_showFile(FileURL(m_prompt.filePath()));
    else if (phase() == Phase::Failed)
        m_prompt.retry();
    else
        m_prompt.download();
}

void UpdateDialogModel::dismiss() {
    m_prompt.dismiss();
}
