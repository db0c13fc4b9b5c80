#pragma once

#include "Support/FakeAccessibilityRight.h"
#include "TolmiApp/Onboarding/OnboardingWizardModel.h"
#include "Views/FlowFixture.h"

#include <optional>

/// The wizard's model for a new user who has only whisper-cli and a speech model.
class OnboardingFixture : public FlowFixture {
    Q_OBJECT
    Q_PROPERTY(OnboardingWizardModel *model READ model CONSTANT)
    /// How often the wizard was closed.
    Q_PROPERTY(int closings READ closings)
    Q_PROPERTY(bool isFinished READ isFinished)
    Q_PROPERTY(QString displayName READ displayName)

public:
    OnboardingFixture();

    OnboardingWizardModel *model() { return &*m_model; }
    int closings() const { return m_closings; }
    bool isFinished() const { return settings->hasCompletedOnboarding(); }
    QString displayName() const { return settings->profileDisplayName(); }

    /// Denies both permissions.
    Q_INVOKABLE void refuseRights();
    /// Answers the microphone prompt.
    Q_INVOKABLE void answerMicrophone(bool isGranted) { microphone.answerAll(isGranted); }
    Q_INVOKABLE void forgetMicrophone() { microphone.present = AuthorizationStatus::NotDetermined; }
    /// Removes whisper-cli and the speech model.
    Q_INVOKABLE void removeTranscription();
    /// Makes changing the avatar fail with this message.
    Q_INVOKABLE void failAvatar() { m_failAvatar(L10n::Key::profileAvatarErrorTooLarge); }

private:
    int m_closings = 0;
    FakeAccessibilityRight m_accessibility;
    std::function<void(L10n::Key)> m_failAvatar;
    std::optional<OnboardingWizardModel> m_model;
};
