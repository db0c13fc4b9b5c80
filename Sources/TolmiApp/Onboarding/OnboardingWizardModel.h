#pragma once

#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Dictation/DictationControl.h"
#include "TolmiApp/Profile/ProfileChipModel.h"
#include "TolmiApp/Settings/OnboardingStep.h"
#include "TolmiApp/Texts/PlatformTexts.h"

#include <QStringList>
#include <QVariantList>

#include <functional>

class AccessibilityRight;
class FileManager;
class TranscriptionHistory;

/// The wizard that takes a new user from nothing to a first dictation in three steps: a name, the two rights,
/// a dictation. The step on screen is remembered, so that the wizard resumes there. Main thread only.
class OnboardingWizardModel final : public ObservableObject {
    Q_OBJECT
    /// The step on screen.
    TOLMI_PUBLISHED_READONLY(OnboardingStep, currentStep, setCurrentStep, rememberStep())
    /// Whether the user has a picture of their own.
    TOLMI_PUBLISHED_READONLY(bool, hasCustomAvatar, setHasCustomAvatar)
    /// Why the avatar could not be changed; empty unless the user is to be told.
    TOLMI_PUBLISHED_READONLY(QString, avatarErrorMessage, setAvatarErrorMessage)
    /// Whether a dictation has landed in the history since the wizard was opened.
    TOLMI_PUBLISHED_READONLY(bool, dictationTestCompleted, setDictationTestCompleted)

    /// Host of the step on screen, from 0.
    Q_PROPERTY(int currentStepIndex READ currentStepIndex NOTIFY currentStepChanged)
    /// For each step the symbol that tells whether it is done, on screen or ahead.
    Q_PROPERTY(QStringList stepSymbols READ stepSymbols NOTIFY progressChanged)
    /// For each step whether it is done.
    Q_PROPERTY(QList<bool> stepsDone READ stepsDone NOTIFY progressChanged)
    /// Whether the step on screen is done.
    Q_PROPERTY(bool canAdvance READ canAdvance NOTIFY progressChanged)
    Q_PROPERTY(QString continueButtonTitle READ continueButtonTitle NOTIFY progressChanged)

    Q_PROPERTY(ProfileChipModel *profile READ profile CONSTANT)
    Q_PROPERTY(QString displayName READ displayName WRITE setDisplayName NOTIFY profileChanged)
    /// The chosen preset avatar, which is the name of its symbol.
    Q_PROPERTY(QString avatarPreset READ avatarPreset WRITE setAvatarPreset NOTIFY profileChanged)
    /// All of them as options of a picker.
    Q_PROPERTY(QVariantList avatarPresets READ avatarPresets NOTIFY profileChanged)
    /// Whether the user's own picture can be chosen here.
    Q_PROPERTY(bool canImportAvatar READ canImportAvatar CONSTANT)

    Q_PROPERTY(bool microphoneGranted READ microphoneGranted NOTIFY permissionsChanged)
    Q_PROPERTY(bool accessibilityGranted READ accessibilityGranted NOTIFY permissionsChanged)
    /// Why the right is missing and what to do about it; empty when there is nothing to say.
    Q_PROPERTY(QString microphoneProblem READ microphoneProblem NOTIFY permissionsChanged)
    Q_PROPERTY(QString accessibilityProblem READ accessibilityProblem NOTIFY permissionsChanged)

    Q_PROPERTY(DictationControl *dictation READ dictation CONSTANT)
    /// What stands in the way of a dictation and what to do about it, the most pressing first.
    Q_PROPERTY(QStringList dictationProblems READ dictationProblems NOTIFY dictationChanged)

public:
    /// What the wizard asks of the platform; all of it outlives the model.
    struct Platform {
        Clock &clock;
        MicrophonePermission &microphone;
        AccessibilityRight &accessibility;
        const FileManager &fileManager;
    };
    /// How the user's own picture is changed; the settings learn of it there.
    struct AvatarActions {
        /// Lets the user choose a picture and takes it; a failure is given as the key of its message. Empty
        /// where pictures cannot be chosen.
        std::function<void(std::function<void(L10n::Key)> onFailure)> importAvatar;
        /// Removes the picture; a failure as above.
        std::function<std::optional<L10n::Key>()> removeAvatar;
    };
    /// What belongs to the place where the wizard is shown.
    struct Host {
        PlatformTexts texts;
        AvatarActions avatar;
        /// Takes the wizard away.
        std::function<void()> onClose;
    };

    /// Opens the wizard where it was left. `history` is that of the flow and outlives the model.
    OnboardingWizardModel(std::shared_ptr<DictationFlowManager> flow, const TranscriptionHistory &history,
        const Platform &platform, Host host);

    int currentStepIndex() const;
    QStringList stepSymbols() const;
    QList<bool> stepsDone() const;
    bool canAdvance() const;
    QString continueButtonTitle() const;

    ProfileChipModel *profile() { return &m_profile; }
    QString displayName() const;
    void setDisplayName(const QString &name);
    QString avatarPreset() const;
    void setAvatarPreset(const QString &preset);
    QVariantList avatarPresets() const;
    bool canImportAvatar() const { return bool(m_host.avatar.importAvatar); }

    bool microphoneGranted() const {
        return m_platform.microphone.status() == AuthorizationStatus::Authorized;
    }
    bool accessibilityGranted() const { return m_flow->accessibilityGranted(); }
    QString microphoneProblem() const;
    QString accessibilityProblem() const;

    DictationControl *dictation() { return &m_dictation; }
    QStringList dictationProblems() const;

    /// The forward button: the next step, or the end.
    Q_INVOKABLE void advance();
    Q_INVOKABLE void goBack();
    /// Puts the rest off to another time.
    Q_INVOKABLE void skip();

    Q_INVOKABLE void importAvatar();
    Q_INVOKABLE void removeAvatar();
    Q_INVOKABLE void dismissAvatarError() { setAvatarErrorMessage({}); }

    Q_INVOKABLE void grantMicrophone();
    Q_INVOKABLE void grantAccessibility() { m_flow->requestAccessibility(); }

    /// A press of the test's button in a later turn of the main loop.
    Q_INVOKABLE void runDictationAction();

Q_SIGNALS:
    void progressChanged();
    void profileChanged();
    void permissionsChanged();
    void dictationChanged();
    /// The user was asked for the microphone and has answered.
    void microphoneAnswered();

private:
    void observeProfile();
    void observePermissions();
    void observeDictation();
    bool isComplete(OnboardingStep step) const;
    void rememberStep();
    void refreshCustomAvatar();
    void showAvatarError(L10n::Key key);
    void followState();
    void followHistory();
    QString lastFailure() const;
    QString text(L10n::Key key) const;
    QString text(L10n::Phrase phrase, const QStringList &values = {}) const;
    QString sentence(const QString &message) const;
    QString joined(const QString &first, const QString &second) const;
    SettingsStore &settings() const { return m_flow->settings(); }

    /// How the last dictation of this showing ended without an entry.
    enum class Failure {
        None,
        Start,
        Processing,
        Silence,
    };

    const std::shared_ptr<DictationFlowManager> m_flow;
    const TranscriptionHistory &m_history;
    const Platform m_platform;
    const Host m_host;
    DictationControl m_dictation;
    ProfileChipModel m_profile;
    const qsizetype m_initialHistoryCount;
    DictationState::Kind m_previousState;
    Failure m_failure = Failure::None;
    /// The flow's message for a failure, which it takes back after a while.
    QString m_failureMessage;
};
