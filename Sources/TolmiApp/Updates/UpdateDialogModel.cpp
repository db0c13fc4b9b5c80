#include "TolmiApp/Updates/UpdateDialogModel.h"

#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>
#include <cmath>

namespace {
using Key = UpdateTexts::Key;
using Phase = UpdatePrompt::Phase;

/// The words of one phase.
struct Words {
    Key title;
    std::optional<Key> hint;
    std::optional<Key> action;
    Key dismissal;
};

Words wordsOf(Phase phase) {
    switch (phase) {
    case Phase::Found:
        return { Key::foundTitle, Key::foundHint, Key::download, Key::later };
    case Phase::UpToDate:
        return { Key::upToDateTitle, Key::upToDateHint, std::nullopt, Key::close };
    case Phase::Failed:
        return { Key::failedTitle, Key::failedHint, Key::tryAgain, Key::close };
    case Phase::Downloading:
        return { Key::downloadingTitle, std::nullopt, std::nullopt, Key::cancel };
    case Phase::Downloaded:
        return { Key::downloadedTitle, Key::downloadedHint, Key::showInFolder, Key::close };
    case Phase::Hidden:
    case Phase::Checking:
        break;
    }
    return { Key::checkingTitle, std::nullopt, std::nullopt, Key::cancel };
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

QString UpdateDialogModel::text(Key key) const {
    return UpdateTexts::text(key, m_settings.uiLanguage());
}

QString UpdateDialogModel::text(Key key, const QString &version) const {
    return UpdateTexts::text(key, m_settings.uiLanguage(), version);
}

QString UpdateDialogModel::windowTitle() const {
    return text(Key::windowTitle);
}

QString UpdateDialogModel::title() const {
    return text(wordsOf(phase()).title, m_prompt.version());
}

QString UpdateDialogModel::problem() const {
    return phase() == Phase::Failed ? m_prompt.message() : QString();
}

QString UpdateDialogModel::hint() const {
    const std::optional<Key> key = wordsOf(phase()).hint;
    return key ? text(*key, m_installedVersion) : QString();
}

QString UpdateDialogModel::releaseNotes() const {
    return phase() == Phase::Found ? m_prompt.releaseNotes() : QString();
}

QString UpdateDialogModel::releaseNotesLabel() const {
    return text(Key::releaseNotes);
}

QString UpdateDialogModel::filePath() const {
    return phase() == Phase::Downloaded ? m_prompt.filePath() : QString();
}

QString UpdateDialogModel::filePathLabel() const {
    return text(Key::downloadedFile);
}

QString UpdateDialogModel::actionText() const {
    const std::optional<Key> key = wordsOf(phase()).action;
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
    return text(Key::downloadProgress);
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
