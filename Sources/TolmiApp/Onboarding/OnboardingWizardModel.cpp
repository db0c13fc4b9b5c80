#include "TolmiApp/Onboarding/OnboardingWizardModel.h"

#include "Foundation/Clock.h"
#include "Platform/AccessibilityRight.h"
#include "Platform/FileManager.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Profile/ProfileReadinessScorer.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>
#include <array>

using Kind = DictationState::Kind;

namespace {
constexpr std::array stepOrder { OnboardingStep::Profile, OnboardingStep::Permissions,
    OnboardingStep::DictationTest };

OnboardingStep firstStep(const SettingsStore &settings) {
    const OnboardingStep last = settings.onboardingLastStep();
    return last == OnboardingStep::Completed ? OnboardingStep::Profile : last;
}
} // namespace

OnboardingWizardModel::OnboardingWizardModel(std::shared_ptr<DictationFlowManager> flow,
    const TranscriptionHistory &history, const Platform &platform, Host host)
    : m_flow(std::move(flow))
    , m_history(history)
    , m_platform(platform)
    , m_host(std::move(host))
    , m_dictation(m_flow, platform.clock)
    , m_profile(settings())
    , m_initialHistoryCount(history.entries().size())
    , m_previousState(m_flow->state().kind()) {
    observeProfile();
    observePermissions();
    observeDictation();
    for (const auto signal : { &OnboardingWizardModel::currentStepChanged,
             &OnboardingWizardModel::profileChanged, &OnboardingWizardModel::permissionsChanged,
             &OnboardingWizardModel::dictationTestCompletedChanged })
        connect(this, signal, this, &OnboardingWizardModel::progressChanged);
    setCurrentStep(firstStep(settings()));
}

void OnboardingWizardModel::observeProfile() {
    connect(
        &settings(), &SettingsStore::profileDisplayNameChanged, this, &OnboardingWizardModel::profileChanged);
    connect(
        &settings(), &SettingsStore::profileAvatarIDChanged, this, &OnboardingWizardModel::profileChanged);
    connect(&settings(), &SettingsStore::uiLanguageChanged, this, &OnboardingWizardModel::profileChanged);
    refreshCustomAvatar();
    connect(&settings(), &SettingsStore::profileAvatarThumbnailRelativePathChanged, this,
        &OnboardingWizardModel::refreshCustomAvatar);
}

void OnboardingWizardModel::observePermissions() {
    // The microphone may be granted in the system's settings; a dictation asks for it.
    connect(
        m_flow.get(), &DictationFlowManager::rightsChecked, this, &OnboardingWizardModel::permissionsChanged);
    connect(
        m_flow.get(), &DictationFlowManager::stateChanged, this, &OnboardingWizardModel::permissionsChanged);
    connect(&settings(), &SettingsStore::uiLanguageChanged, this, &OnboardingWizardModel::permissionsChanged);
    connect(
        this, &OnboardingWizardModel::microphoneAnswered, this, &OnboardingWizardModel::permissionsChanged);
}

void OnboardingWizardModel::observeDictation() {
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this, &OnboardingWizardModel::followState);
    connect(
        m_flow.get(), &DictationFlowManager::stateChanged, this, &OnboardingWizardModel::dictationChanged);
    connect(&m_history, &TranscriptionHistory::entriesChanged, this, &OnboardingWizardModel::followHistory);
    connect(&settings(), &SettingsStore::whisperBinaryPathChanged, this,
        &OnboardingWizardModel::dictationChanged);
    connect(&settings(), &SettingsStore::modelPathChanged, this, &OnboardingWizardModel::dictationChanged);
    connect(this, &OnboardingWizardModel::permissionsChanged, this, &OnboardingWizardModel::dictationChanged);
}

int OnboardingWizardModel::currentStepIndex() const {
    const auto found = std::find(stepOrder.begin(), stepOrder.end(), m_currentStep);
    return found == stepOrder.end() ? 0 : int(found - stepOrder.begin());
}

QStringList OnboardingWizardModel::stepSymbols() const {
    QStringList symbols;
    const QList<bool> done = stepsDone();
    for (int index = 0; index < done.size(); ++index) {
        if (done[index])
            symbols.append(QStringLiteral("checkmark.circle.fill"));
        else
            symbols.append(index == currentStepIndex() ? QStringLiteral("circle.inset.filled")
                                                       : QStringLiteral("circle"));
    }
    return symbols;
}

QList<bool> OnboardingWizardModel::stepsDone() const {
    QList<bool> done;
    const int current = currentStepIndex();
    for (int index = 0; index < int(stepOrder.size()); ++index)
        done.append(index < current || (index == current && canAdvance()));
    return done;
}

bool OnboardingWizardModel::canAdvance() const {
    return isComplete(m_currentStep);
}

bool OnboardingWizardModel::isComplete(OnboardingStep step) const {
    switch (step) {
    case OnboardingStep::Profile:
        return ProfileReadinessScorer::isPersonalizedDisplayName(settings().profileDisplayName());
    case OnboardingStep::Permissions:
        return microphoneGranted() && accessibilityGranted();
    case OnboardingStep::DictationTest:
        return m_dictationTestCompleted;
    case OnboardingStep::Completed:
        return true;
    }
    Q_UNREACHABLE();
}

QString OnboardingWizardModel::continueButtonTitle() const {
    return text(m_currentStep == OnboardingStep::DictationTest ? L10n::Key::onboardingFinish
                                                               : L10n::Key::onboardingContinue);
}

void OnboardingWizardModel::advance() {
    switch (m_currentStep) {
    case OnboardingStep::Profile:
        return setCurrentStep(OnboardingStep::Permissions);
    case OnboardingStep::Permissions:
        return setCurrentStep(OnboardingStep::DictationTest);
    case OnboardingStep::DictationTest:
        settings().markOnboardingCompleted();
        return m_host.onClose();
    case OnboardingStep::Completed:
        return;
    }
}

void OnboardingWizardModel::goBack() {
    switch (m_currentStep) {
    case OnboardingStep::Completed:
        return setCurrentStep(OnboardingStep::DictationTest);
    case OnboardingStep::DictationTest:
        return setCurrentStep(OnboardingStep::Permissions);
    case OnboardingStep::Permissions:
        return setCurrentStep(OnboardingStep::Profile);
    case OnboardingStep::Profile:
        return;
    }
}

void OnboardingWizardModel::skip() {
    settings().markOnboardingSkipped(m_currentStep);
    m_host.onClose();
}

void OnboardingWizardModel::rememberStep() {
    settings().markOnboardingAdvanced(currentStep());
}

QString OnboardingWizardModel::displayName() const {
    return settings().profileDisplayName();
}

void OnboardingWizardModel::setDisplayName(const QString &name) {
    settings().setProfileDisplayName(name);
}

QString OnboardingWizardModel::avatarPreset() const {
    return normalizedProfileAvatarID(settings().profileAvatarID());
}

void OnboardingWizardModel::setAvatarPreset(const QString &preset) {
    settings().setProfileAvatarID(preset);
}

QVariantList OnboardingWizardModel::avatarPresets() const {
    QVariantList presets;
    for (const ProfileAvatarPreset preset : allCases<ProfileAvatarPreset>()) {
        presets.append(QVariantMap { { QStringLiteral("value"), rawValue(preset) },
            { QStringLiteral("text"), L10n::profileAvatarName(preset, settings().uiLanguage()) },
            { QStringLiteral("symbol"), rawValue(preset) } });
    }
    return presets;
}

void OnboardingWizardModel::refreshCustomAvatar() {
    setHasCustomAvatar(settings().resolvedCustomAvatarThumbnailURL().has_value());
}

void OnboardingWizardModel::importAvatar() {
    m_host.avatar.importAvatar([model = QPointer(this)](L10n::Key failure) {
        if (model)
            model->showAvatarError(failure);
    });
}

void OnboardingWizardModel::removeAvatar() {
    if (const std::optional<L10n::Key> failure = m_host.avatar.removeAvatar())
        showAvatarError(*failure);
}

void OnboardingWizardModel::showAvatarError(L10n::Key key) {
    // A new picture takes the place of the one before, which is gone even if nothing comes of it.
    refreshCustomAvatar();
    m_profile.refreshPicture();
    setAvatarErrorMessage(text(key));
}

void OnboardingWizardModel::grantMicrophone() {
    m_platform.microphone.requestAccess([model = QPointer(this)](bool) {
        if (model)
            Q_EMIT model->microphoneAnswered();
    });
}

QString OnboardingWizardModel::microphoneProblem() const {
    switch (m_platform.microphone.status()) {
    case AuthorizationStatus::Denied:
    case AuthorizationStatus::Restricted:
        return joined(sentence(text(L10n::Key::healthAccessDenied)), text(L10n::Key::healthEnableMicHint));
    case AuthorizationStatus::NotDetermined:
    case AuthorizationStatus::Authorized:
        return {};
    }
    Q_UNREACHABLE();
}

QString OnboardingWizardModel::accessibilityProblem() const {
    if (accessibilityGranted())
        return {};
    // Where the system knows the reason, it names the remedy too.
    const QString reason = m_platform.accessibility.state().reason;
    if (reason.isEmpty())
        return joined(sentence(text(L10n::Key::healthAccessibilityMissing)),
            text(L10n::Key::healthGrantAccessibilityHint));
    return joined(sentence(text(L10n::Key::healthAccessibilityMissing)), reason);
}

void OnboardingWizardModel::runDictationAction() {
    m_platform.clock.post([model = QPointer(this)] {
        if (model)
            launch(DictationControl::press(model->m_flow));
    });
}

void OnboardingWizardModel::followState() {
    const DictationState &state = m_flow->state();
    const bool wasReady = m_previousState == Kind::Idle || m_previousState == Kind::Done;
    if (state.kind() == Kind::Recording)
        m_failure = Failure::None;
    else if (state.kind() == Kind::Error)
        m_failure = wasReady ? Failure::Start : Failure::Processing;
    else if (state.kind() == Kind::Done && m_flow->lastTranscript().isEmpty())
        m_failure = Failure::Silence;
    if (state.kind() == Kind::Error)
        m_failureMessage = state.message();
    m_previousState = state.kind();
}

void OnboardingWizardModel::followHistory() {
    if (m_history.entries().size() > m_initialHistoryCount)
        setDictationTestCompleted(true);
}

QStringList OnboardingWizardModel::dictationProblems() const {
    QStringList problems;
    const auto named = [this](L10n::Key name, const QString &problem) {
        return text(L10n::Phrase::labelled, { text(name), problem });
    };
    if (const QString problem = microphoneProblem(); !problem.isEmpty())
        problems.append(named(L10n::Key::healthMicrophone, problem));
    QStringList paths;
    if (!m_platform.fileManager.isExecutableFile(settings().whisperBinaryPath()))
        paths.append(named(L10n::Key::healthBinary, sentence(text(L10n::Key::healthBinaryMissing))));
    if (!m_platform.fileManager.fileExists(settings().modelPath()))
        paths.append(named(L10n::Key::healthModel, sentence(text(L10n::Key::healthModelMissing))));
    if (!paths.isEmpty())
        paths.last() = joined(
            paths.last(), text(L10n::Phrase::onboardingPathHelp, { text(L10n::Key::onboardingSkip) }));
    problems += paths;
    // A known cause says more than what came of it.
    if (const QString failure = lastFailure(); problems.isEmpty() && !failure.isEmpty())
        problems.append(failure);
    return problems;
}

QString OnboardingWizardModel::lastFailure() const {
    switch (m_failure) {
    case Failure::None:
        return {};
    case Failure::Start:
        return joined(sentence(m_failureMessage), text(L10n::Phrase::onboardingMicrophoneHelp));
    case Failure::Processing:
        return m_failureMessage;
    case Failure::Silence:
        return text(L10n::Phrase::onboardingSilenceHelp);
    }
    Q_UNREACHABLE();
}

QString OnboardingWizardModel::text(L10n::Key key) const {
    return m_host.texts.text(key, settings().uiLanguage());
}

QString OnboardingWizardModel::text(L10n::Phrase phrase, const QStringList &values) const {
    return m_host.texts.text(phrase, settings().uiLanguage(), values);
}

QString OnboardingWizardModel::sentence(const QString &message) const {
    return message.endsWith(u'.') ? message : text(L10n::Phrase::sentence, { message });
}

QString OnboardingWizardModel::joined(const QString &first, const QString &second) const {
    return text(L10n::Phrase::joined, { first, second });
}
