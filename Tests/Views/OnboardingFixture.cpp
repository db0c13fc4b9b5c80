#include "Views/OnboardingFixture.h"

OnboardingFixture::OnboardingFixture() {
    fileManager.addExecutable(settings->whisperBinaryPath());
    fileManager.files[settings->modelPath()] = "model";
    m_model.emplace(manager, *history,
        OnboardingWizardModel::Platform { clock, microphone, m_accessibility, fileManager },
        OnboardingWizardModel::Host { PlatformTexts::forLinux(),
            { [this](std::function<void(L10n::Key)> onFailure) { m_failAvatar = std::move(onFailure); },
                [] { return std::optional<L10n::Key>(); } },
            [this] { ++m_closings; } });
}

void OnboardingFixture::refuseRights() {
    microphone.present = AuthorizationStatus::Denied;
    fakes.hotkey->isTrusted = false;
    fakes.application.didBecomeActive();
}

void OnboardingFixture::removeTranscription() {
    settings->setWhisperBinaryPath(QStringLiteral("/nowhere/whisper-cli"));
    settings->setModelPath(QStringLiteral("/nowhere/model.bin"));
}
