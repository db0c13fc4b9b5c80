#include "TolmiApp/Profile/ProfileWorkspaceModel.h"

#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Profile/ProfileAvatarEditor.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Texts/PickerOptions.h"

#include <QPointer>

#include <algorithm>

namespace {

L10n::Key recommendationKey(ProfileReadinessItem item) {
    switch (item) {
    case ProfileReadinessItem::DisplayName:
        return L10n::Key::profileRecommendationDisplayName;
    case ProfileReadinessItem::Avatar:
        return L10n::Key::profileRecommendationAvatar;
    case ProfileReadinessItem::Microphone:
        return L10n::Key::profileRecommendationMicrophone;
    case ProfileReadinessItem::Accessibility:
        return L10n::Key::profileRecommendationAccessibility;
    case ProfileReadinessItem::DictationTest:
        return L10n::Key::profileRecommendationDictation;
    }
    Q_UNREACHABLE();
}

} // namespace

ProfileWorkspaceModel::ProfileWorkspaceModel(
    std::shared_ptr<DictationFlowManager> flow, Dependencies dependencies, QObject *parent)
    : ObservableObject(parent)
    , m_flow(std::move(flow))
    , m_dependencies(std::move(dependencies))
    , m_profile(settings()) {
    refreshReadiness();
    observeSettings();
    observeProgress();
}

ProfileWorkspaceModel::~ProfileWorkspaceModel() = default;

void ProfileWorkspaceModel::observeSettings() {
    const SettingsStore *const store = &settings();
    const auto reminder = &ProfileWorkspaceModel::onboardingReminderChanged;
    connect(
        store, &SettingsStore::profileDisplayNameChanged, this, &ProfileWorkspaceModel::displayNameChanged);
    connect(store, &SettingsStore::profileAvatarIDChanged, this, &ProfileWorkspaceModel::avatarPresetChanged);
    connect(store, &SettingsStore::uiLanguageChanged, this, &ProfileWorkspaceModel::languageChanged);
    connect(store, &SettingsStore::uiLanguageChanged, this, &ProfileWorkspaceModel::readinessTextsChanged);
    connect(
        store, &SettingsStore::uiLanguageChanged, this, &ProfileWorkspaceModel::avatarErrorMessageChanged);
    connect(this, &ProfileWorkspaceModel::avatarErrorChanged, this,
        &ProfileWorkspaceModel::avatarErrorMessageChanged);
    connect(store, &SettingsStore::hasCompletedOnboardingChanged, this, reminder);
    connect(store, &SettingsStore::onboardingVersionChanged, this, reminder);
}

void ProfileWorkspaceModel::observeProgress() {
    const SettingsStore *const store = &settings();
    const auto refresh = &ProfileWorkspaceModel::refresh;
    connect(
        this, &ProfileWorkspaceModel::readinessChanged, this, &ProfileWorkspaceModel::readinessTextsChanged);
    connect(store, &SettingsStore::profileDisplayNameChanged, this, refresh);
    connect(store, &SettingsStore::profileAvatarIDChanged, this, refresh);
    connect(store, &SettingsStore::profileAvatarThumbnailRelativePathChanged, this, refresh);
    connect(m_flow.get(), &DictationFlowManager::accessibilityGrantedChanged, this, refresh);
    // The microphone may be granted in the system's settings; a dictation asks for it.
    const auto readiness = &ProfileWorkspaceModel::refreshReadiness;
    connect(m_flow.get(), &DictationFlowManager::rightsChecked, this, readiness);
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this, readiness);
    connect(&m_dependencies.history, &TranscriptionHistory::entriesChanged, this, refresh);
}

SettingsStore &ProfileWorkspaceModel::settings() const {
    return m_flow->settings();
}

AppLanguage ProfileWorkspaceModel::language() const {
    return settings().uiLanguage();
}

ProfileReadinessInput ProfileWorkspaceModel::readinessInput() const {
    // First, since it forgets a picture that is broken.
    const bool hasCustomAvatar = settings().resolvedCustomAvatarThumbnailURL().has_value();
    return { .profileDisplayName = settings().profileDisplayName(),
        .profileAvatarID = settings().profileAvatarID(),
        .hasCustomAvatar = hasCustomAvatar,
        .microphoneGranted = m_dependencies.microphone.status() == AuthorizationStatus::Authorized,
        .accessibilityGranted = m_flow->accessibilityGranted(),
        .hasSuccessfulDictationTest = !m_dependencies.history.entries().isEmpty() };
}

void ProfileWorkspaceModel::refreshReadiness() {
    setReadiness(readinessInput());
}

void ProfileWorkspaceModel::refresh() {
    refreshReadiness();
    m_profile.refreshPicture();
}

const QString &ProfileWorkspaceModel::displayName() const {
    return settings().profileDisplayName();
}

void ProfileWorkspaceModel::setDisplayName(const QString &name) {
    settings().setProfileDisplayName(name);
}

QString ProfileWorkspaceModel::avatarPreset() const {
    return normalizedProfileAvatarID(settings().profileAvatarID());
}

void ProfileWorkspaceModel::setAvatarPreset(const QString &preset) {
    settings().setProfileAvatarID(preset);
}

QVariantList ProfileWorkspaceModel::avatarPresets() const {
    QVariantList options;
    for (const ProfileAvatarPreset preset : allCases<ProfileAvatarPreset>()) {
        const QString symbol = rawValue(preset);
        QVariantMap option = PickerOptions::option(symbol, L10n::profileAvatarName(preset, language()));
        option.insert(QStringLiteral("symbol"), symbol);
        options.append(option);
    }
    return options;
}

bool ProfileWorkspaceModel::hasCustomAvatar() const {
    return m_readiness.hasCustomAvatar;
}

bool ProfileWorkspaceModel::showsOnboardingReminder() const {
    return settings().shouldShowOnboardingReminder();
}

bool ProfileWorkspaceModel::profileStepComplete() const {
    return ProfileReadinessScorer::isPersonalizedDisplayName(m_readiness.profileDisplayName);
}

bool ProfileWorkspaceModel::permissionsStepComplete() const {
    return m_readiness.microphoneGranted && m_readiness.accessibilityGranted;
}

bool ProfileWorkspaceModel::dictationStepComplete() const {
    return m_readiness.hasSuccessfulDictationTest;
}

QString ProfileWorkspaceModel::onboardingProgressText() const {
    const std::array steps { profileStepComplete(), permissionsStepComplete(), dictationStepComplete() };
    const auto completed = std::count(steps.begin(), steps.end(), true);
    return L10n::onboardingProgress(completed, qint64(steps.size()), language());
}

QString ProfileWorkspaceModel::scoreText() const {
    const int score = ProfileReadinessScorer::score(m_readiness).score;
    return L10n::text(L10n::Phrase::profileScore, language(), { QString::number(score) });
}

QStringList ProfileWorkspaceModel::recommendations() const {
    QStringList texts;
    for (const ProfileReadinessItem item : ProfileReadinessScorer::score(m_readiness).recommendations)
        texts.append(L10n::text(recommendationKey(item), language()));
    return texts;
}

QString ProfileWorkspaceModel::avatarErrorMessage() const {
    return m_avatarError ? L10n::text(*m_avatarError, language()) : QString();
}

void ProfileWorkspaceModel::importAvatar() {
    // The user may leave the workspace before the answer comes.
    m_dependencies.avatar.importAvatar([model = QPointer(this)](L10n::Key failure) {
        if (model)
            model->showImportFailure(failure);
    });
}

void ProfileWorkspaceModel::showImportFailure(L10n::Key failure) {
    // A new picture takes the place of the one before, which is gone even if nothing comes of it.
    refresh();
    setAvatarError(failure);
}

void ProfileWorkspaceModel::removeAvatar() {
    setAvatarError(m_dependencies.avatar.removeAvatar());
}
