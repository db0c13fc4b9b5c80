#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Profile/ProfileChipModel.h"
#include "TolmiApp/Profile/ProfileReadinessScorer.h"
#include "TolmiApp/Texts/L10n.h"

#include <QVariant>

#include <functional>
#include <memory>

class DictationFlowManager;
class MicrophonePermission;
class ProfileAvatarEditor;
class SettingsStore;
class TranscriptionHistory;

/// What the profile workspace shows and does: the user's name and avatar, and how far the setting-up has
/// come.
class ProfileWorkspaceModel final : public ObservableObject {
    Q_OBJECT
    /// How far the user had come when this was last looked at.
    TOLMI_PUBLISHED_READONLY(ProfileReadinessInput, readiness, setReadiness)
    /// Why the picture could not be changed; absent unless the user is to be told.
    TOLMI_PUBLISHED_READONLY(std::optional<L10n::Key>, avatarError, setAvatarError)
    /// Picture, symbol and name.
    Q_PROPERTY(ProfileChipModel *profile READ profile CONSTANT)
    /// What is written is stored as the settings keep names.
    Q_PROPERTY(QString displayName READ displayName WRITE setDisplayName NOTIFY displayNameChanged)
    /// The preset avatar, which is the name of its symbol. The user's own picture goes before it.
    Q_PROPERTY(QString avatarPreset READ avatarPreset WRITE setAvatarPreset NOTIFY avatarPresetChanged)
    /// The rows of its picker.
    Q_PROPERTY(QVariantList avatarPresets READ avatarPresets NOTIFY languageChanged)
    Q_PROPERTY(bool hasCustomAvatar READ hasCustomAvatar NOTIFY readinessChanged)
    /// Whether the user should be asked to finish the wizard.
    Q_PROPERTY(bool showsOnboardingReminder READ showsOnboardingReminder NOTIFY onboardingReminderChanged)
    /// The checklist.
    Q_PROPERTY(bool profileStepComplete READ profileStepComplete NOTIFY readinessChanged)
    Q_PROPERTY(bool permissionsStepComplete READ permissionsStepComplete NOTIFY readinessChanged)
    Q_PROPERTY(bool dictationStepComplete READ dictationStepComplete NOTIFY readinessChanged)
    /// "Progress: 2/3".
    Q_PROPERTY(QString onboardingProgressText READ onboardingProgressText NOTIFY readinessTextsChanged)
    /// "80/100".
    Q_PROPERTY(QString scoreText READ scoreText NOTIFY readinessChanged)
    /// What to do next, the most pressing first; empty when all is done.
    Q_PROPERTY(QStringList recommendations READ recommendations NOTIFY readinessTextsChanged)
    /// `avatarError` in the language of the interface; empty without one.
    Q_PROPERTY(QString avatarErrorMessage READ avatarErrorMessage NOTIFY avatarErrorMessageChanged)

public:
    /// What the model works on; all of it outlives the model.
    struct Dependencies {
        /// Of the flow.
        const TranscriptionHistory &history;
        MicrophonePermission &microphone;
        ProfileAvatarEditor &avatar;
        /// Brings the wizard back.
        std::function<void()> onResumeOnboarding;
    };

    ProfileWorkspaceModel(
        std::shared_ptr<DictationFlowManager> flow, Dependencies dependencies, QObject *parent = nullptr);
    ~ProfileWorkspaceModel() override;

    ProfileChipModel *profile() { return &m_profile; }
    const QString &displayName() const;
    void setDisplayName(const QString &name);
    QString avatarPreset() const;
    void setAvatarPreset(const QString &preset);
    QVariantList avatarPresets() const;
    bool hasCustomAvatar() const;
    bool showsOnboardingReminder() const;
    bool profileStepComplete() const;
    bool permissionsStepComplete() const;
    bool dictationStepComplete() const;
    QString onboardingProgressText() const;
    QString scoreText() const;
    QStringList recommendations() const;
    QString avatarErrorMessage() const;

    /// Looks again at what changes without telling, such as permissions.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void importAvatar();
    Q_INVOKABLE void removeAvatar();
    Q_INVOKABLE void dismissAvatarError() { setAvatarError(std::nullopt); }
    Q_INVOKABLE void resumeOnboarding() { m_dependencies.onResumeOnboarding(); }

Q_SIGNALS:
    void displayNameChanged();
    void avatarPresetChanged();
    void languageChanged();
    void onboardingReminderChanged();
    void readinessTextsChanged();
    void avatarErrorMessageChanged();

private:
    void observeSettings();
    void observeProgress();
    void refreshReadiness();
    void showImportFailure(L10n::Key failure);
    SettingsStore &settings() const;
    AppLanguage language() const;
    ProfileReadinessInput readinessInput() const;

    const std::shared_ptr<DictationFlowManager> m_flow;
    const Dependencies m_dependencies;
    ProfileChipModel m_profile;
};
