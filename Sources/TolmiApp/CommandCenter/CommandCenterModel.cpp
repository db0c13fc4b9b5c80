#include "TolmiApp/CommandCenter/CommandCenterModel.h"

#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Profile/ProfileReadinessScorer.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Texts/L10n.h"

#include <algorithm>

CommandCenterModel::CommandCenterModel(std::shared_ptr<DictationFlowManager> flow,
    const TranscriptionHistory &history, const Platform &platform, Navigation navigation)
    : m_flow(std::move(flow))
    , m_history(history)
    , m_microphone(platform.microphone)
    , m_navigation(std::move(navigation))
    , m_dictation(m_flow, platform.clock)
    , m_profile(settings()) {
    observeSettings();
    observeProgress();
    connect(&m_history, &TranscriptionHistory::entriesChanged, this, &CommandCenterModel::historyChanged);
}

void CommandCenterModel::observeSettings() {
    connect(&settings(), &SettingsStore::hasCompletedOnboardingChanged, this,
        &CommandCenterModel::onboardingReminderChanged);
    connect(&settings(), &SettingsStore::onboardingVersionChanged, this,
        &CommandCenterModel::onboardingReminderChanged);
    connect(&settings(), &SettingsStore::uiLanguageChanged, this, &CommandCenterModel::historyChanged);
    connect(
        &settings(), &SettingsStore::uiLanguageChanged, this, &CommandCenterModel::onboardingProgressChanged);
}

void CommandCenterModel::observeProgress() {
    connect(&settings(), &SettingsStore::profileDisplayNameChanged, this,
        &CommandCenterModel::onboardingProgressChanged);
    // The microphone permission may change in the system's settings; a dictation checks it.
    connect(m_flow.get(), &DictationFlowManager::rightsChecked, this,
        &CommandCenterModel::onboardingProgressChanged);
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this,
        &CommandCenterModel::onboardingProgressChanged);
    connect(&m_history, &TranscriptionHistory::entriesChanged, this,
        &CommandCenterModel::onboardingProgressChanged);
}

bool CommandCenterModel::showsOnboardingReminder() const {
    return settings().shouldShowOnboardingReminder();
}

QString CommandCenterModel::onboardingProgress() const {
    return L10n::onboardingProgress(completedOnboardingSteps(), 3, language());
}

int CommandCenterModel::completedOnboardingSteps() const {
    const bool hasName = ProfileReadinessScorer::isPersonalizedDisplayName(settings().profileDisplayName());
    const bool hasRights
        = m_microphone.status() == AuthorizationStatus::Authorized && m_flow->accessibilityGranted();
    const bool hasDictated = !m_history.entries().isEmpty();
    return int(hasName) + int(hasRights) + int(hasDictated);
}

QString CommandCenterModel::historyCount() const {
    return L10n::historyCount(m_history.entries().size(), language());
}

QString CommandCenterModel::historyHint() const {
    const auto pinned = std::count_if(m_history.entries().begin(), m_history.entries().end(),
        [](const HistoryEntry &entry) { return entry.isPinned; });
    return L10n::text(L10n::Phrase::joined, language(),
        { L10n::pinnedCount(pinned, language()),
            L10n::text(L10n::Key::commandCenterHistoryHint, language()) });
}

QString CommandCenterModel::lastDestination() const {
    const std::optional<HistoryEntry> latest = m_history.latestEntry();
    if (!latest)
        return {};
    const QString target
        = latest->pasteTargetAppName.value_or(L10n::text(L10n::Key::unknownTarget, language()));
    return L10n::labelled(L10n::Key::commandCenterLastDestination, target, language());
}

AppLanguage CommandCenterModel::language() const {
    return settings().uiLanguage();
}
