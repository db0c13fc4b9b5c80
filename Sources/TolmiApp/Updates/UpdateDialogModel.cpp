#include "TolmiApp/Updates/UpdateDialogModel.h"

#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>
#include <cmath>

namespace {
using L10n::Phrase;
using Phase = UpdatePrompt::Phase;

/// The texts of one phase.
struct PhaseTexts {
    Phrase title;
    std::optional<Phrase> hint;
    std::optional<Phrase> action;
    Phrase dismissal;
};

PhaseTexts textsOf(Phase phase) {
    switch (phase) {
    case Phase::Found:
        return { Phrase::updateFoundTitle, Phrase::updateFoundHint, Phrase::updateDownload,
            Phrase::updateLater };
    case Phase::UpToDate:
        return { Phrase::updateUpToDateTitle, Phrase::updateUpToDateHint, std::nullopt, Phrase::updateClose };
    case Phase::Failed:
        return { Phrase::updateFailedTitle, Phrase::updateFailedHint, Phrase::updateTryAgain,
            Phrase::updateClose };
    case Phase::Downloading:
        return { Phrase::updateDownloadingTitle, std::nullopt, std::nullopt, Phrase::updateCancel };
    case Phase::Downloaded:
        return { Phrase::updateDownloadedTitle, Phrase::updateDownloadedHint, Phrase::updateShowInFolder,
            Phrase::updateClose };
    case Phase::Hidden:
    case Phase::Checking:
        break;
    }
    return { Phrase::updateCheckingTitle, std::nullopt, std::nullopt, Phrase::updateCancel };
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
    // contentChanged first, so that the texts are up to date when the phase changes.
    connect(&prompt, &UpdatePrompt::phaseChanged, this, &UpdateDialogModel::contentChanged);
    connect(&prompt, &UpdatePrompt::phaseChanged, this, &UpdateDialogModel::phaseChanged);
}

QString UpdateDialogModel::text(Phrase phrase, const QStringList &values) const {
    return L10n::text(phrase, m_settings.uiLanguage(), values);
}

QString UpdateDialogModel::windowTitle() const {
    return text(Phrase::updateWindowTitle);
}

QString UpdateDialogModel::title() const {
    return text(textsOf(phase()).title, { m_prompt.version() });
}

QString UpdateDialogModel::problem() const {
    return phase() == Phase::Failed ? m_prompt.message() : QString();
}

QString UpdateDialogModel::hint() const {
    const std::optional<Phrase> phrase = textsOf(phase()).hint;
    return phrase ? text(*phrase, { m_installedVersion }) : QString();
}

QString UpdateDialogModel::description() const {
    return problem().isEmpty() ? hint() : text(Phrase::joined, { problem(), hint() });
}

QString UpdateDialogModel::releaseNotes() const {
    return phase() == Phase::Found ? m_prompt.releaseNotes() : QString();
}

QString UpdateDialogModel::releaseNotesLabel() const {
    return text(Phrase::updateReleaseNotes);
}

QString UpdateDialogModel::filePath() const {
    return phase() == Phase::Downloaded ? m_prompt.filePath() : QString();
}

QString UpdateDialogModel::filePathLabel() const {
    return text(Phrase::updateDownloadedFile);
}

QString UpdateDialogModel::actionText() const {
    const std::optional<Phrase> phrase = textsOf(phase()).action;
    return phrase ? text(*phrase) : QString();
}

QString UpdateDialogModel::dismissText() const {
    return text(textsOf(phase()).dismissal);
}

double UpdateDialogModel::progress() const {
    return std::clamp(m_prompt.progress(), 0.0, 1.0);
}

QString UpdateDialogModel::progressText() const {
    return text(Phrase::percent, { QString::number(std::floor(progress() * 100)) });
}

QString UpdateDialogModel::progressLabel() const {
    return text(Phrase::updateDownloadProgress);
}

void UpdateDialogModel::act() {
    // Each call may change the phase at once, so only one may run.
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
