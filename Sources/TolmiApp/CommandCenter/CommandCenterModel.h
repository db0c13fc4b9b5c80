#pragma once

#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Dictation/DictationControl.h"
#include "TolmiApp/Navigation/StudioDestination.h"
#include "TolmiApp/Profile/ProfileChipModel.h"

#include <functional>

class TranscriptionHistory;

/// The start page of the Studio: the dictation, a summary of the history, the reminder of an unfinished
/// onboarding and links to the other workspaces. Main thread only.
class CommandCenterModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(DictationControl *dictation READ dictation CONSTANT)
    Q_PROPERTY(ProfileChipModel *profile READ profile CONSTANT)
    /// Whether the first-start wizard is still unfinished.
    Q_PROPERTY(bool showsOnboardingReminder READ showsOnboardingReminder NOTIFY onboardingReminderChanged)
    Q_PROPERTY(QString onboardingProgress READ onboardingProgress NOTIFY onboardingProgressChanged)
    /// The number of entries in the history.
    Q_PROPERTY(QString historyCount READ historyCount NOTIFY historyChanged)
    /// The number of pinned entries, and what the history is for.
    Q_PROPERTY(QString historyHint READ historyHint NOTIFY historyChanged)
    /// Where the latest text was pasted; empty without entries.
    Q_PROPERTY(QString lastDestination READ lastDestination NOTIFY historyChanged)

public:
    /// The platform services in use; all must outlive the model.
    struct Platform {
        Clock &clock;
        MicrophonePermission &microphone;
    };
    /// Navigation to other windows and workspaces.
    struct Navigation {
        std::function<void(StudioDestination)> onNavigate;
        std::function<void()> onResumeOnboarding;
    };

    /// `history` is the flow's and must outlive the model.
    CommandCenterModel(std::shared_ptr<DictationFlowManager> flow, const TranscriptionHistory &history,
        const Platform &platform, Navigation navigation);

    DictationControl *dictation() { return &m_dictation; }
    ProfileChipModel *profile() { return &m_profile; }
    bool showsOnboardingReminder() const;
    QString onboardingProgress() const;
    QString historyCount() const;
    QString historyHint() const;
    QString lastDestination() const;

    /// How many of the three steps are complete: a custom name, both permissions, a dictation. Any past
    /// dictation counts.
    int completedOnboardingSteps() const;

    Q_INVOKABLE void openProfile() { m_navigation.onNavigate(StudioDestination::Profile); }
    Q_INVOKABLE void openDictationLive() { m_navigation.onNavigate(StudioDestination::DictationLive); }
    Q_INVOKABLE void openHistory() { m_navigation.onNavigate(StudioDestination::History); }
    Q_INVOKABLE void openTemplates() { m_navigation.onNavigate(StudioDestination::Templates); }
    Q_INVOKABLE void openHealth() { m_navigation.onNavigate(StudioDestination::Health); }
    Q_INVOKABLE void resumeOnboarding() { m_navigation.onResumeOnboarding(); }

Q_SIGNALS:
    void onboardingReminderChanged();
    void onboardingProgressChanged();
    void historyChanged();

private:
    void observeSettings();
    void observeProgress();
    AppLanguage language() const;
    SettingsStore &settings() const { return m_flow->settings(); }

    const std::shared_ptr<DictationFlowManager> m_flow;
    const TranscriptionHistory &m_history;
    MicrophonePermission &m_microphone;
    const Navigation m_navigation;
    DictationControl m_dictation;
    ProfileChipModel m_profile;
};
