#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Contracts/DictationState.h"
#include "TolmiApp/Profile/ProfileChipModel.h"

#include <QVariant>

#include <functional>
#include <memory>

class DictationFlowManager;
class Pasteboard;
class SettingsStore;

/// What the popup of the status item shows and does.
class MenuBarPopupModel final : public ObservableObject {
    Q_OBJECT
    /// Whether the button that looks for updates works.
    TOLMI_PUBLISHED(bool, canCheckForUpdates, setCanCheckForUpdates)
    /// The flow's state: what tells it in the badge, in which shade of the palette, and by which name.
    Q_PROPERTY(Indicator badgeIndicator READ badgeIndicator NOTIFY stateChanged)
    Q_PROPERTY(Shade badgeShade READ badgeShade NOTIFY stateChanged)
    Q_PROPERTY(QString stateLabel READ stateLabel NOTIFY stateLabelChanged)
    Q_PROPERTY(ProfileChipModel *profile READ profile CONSTANT)
    /// Whether the program may watch and post keys.
    Q_PROPERTY(bool accessibilityGranted READ accessibilityGranted NOTIFY accessibilityGrantedChanged)
    /// Empty until the first dictation of this run.
    Q_PROPERTY(QString lastTranscript READ lastTranscript NOTIFY lastTranscriptChanged)
    /// The rows of the two pickers: objects with a `value` and a `text`.
    Q_PROPERTY(QVariantList uiLanguageOptions READ uiLanguageOptions NOTIFY uiLanguageChanged)
    Q_PROPERTY(
        QVariantList transcriptionLanguageOptions READ transcriptionLanguageOptions NOTIFY uiLanguageChanged)
    /// The language of the interface as it is stored.
    Q_PROPERTY(QString uiLanguage READ uiLanguage WRITE setUiLanguage NOTIFY uiLanguageChanged)
    /// The code of the spoken language, which need not be among the options.
    Q_PROPERTY(QString transcriptionLanguage READ transcriptionLanguage WRITE setTranscriptionLanguage NOTIFY
            transcriptionLanguageChanged)
    Q_PROPERTY(bool refinementEnabled READ refinementEnabled WRITE setRefinementEnabled NOTIFY
            refinementEnabledChanged)

public:
    enum class Indicator {
        Circle,
        Spinner,
    };
    Q_ENUM(Indicator)

    enum class Shade {
        Frost,
        White,
        Cloud,
        Smoke,
    };
    Q_ENUM(Shade)

    /// The ways out of the popup. All are set.
    struct Actions {
        std::function<void()> openCommandCenter;
        std::function<void()> openProfile;
        std::function<void()> openSettings;
        std::function<void()> checkForUpdates;
        std::function<void()> quit;
    };

    /// `pasteboard` outlives the model.
    MenuBarPopupModel(std::shared_ptr<DictationFlowManager> flow, Pasteboard &pasteboard, Actions actions,
        QObject *parent = nullptr);

    static Indicator indicatorOf(DictationState::Kind kind);
    static Shade shadeOf(DictationState::Kind kind);

    Indicator badgeIndicator() const;
    Shade badgeShade() const;
    QString stateLabel() const;
    ProfileChipModel *profile() { return &m_profile; }
    bool accessibilityGranted() const;
    const QString &lastTranscript() const;
    QVariantList uiLanguageOptions() const;
    QVariantList transcriptionLanguageOptions() const;
    QString uiLanguage() const;
    void setUiLanguage(const QString &stored);
    const QString &transcriptionLanguage() const;
    void setTranscriptionLanguage(const QString &code);
    bool refinementEnabled() const;
    /// Takes effect on the next dictation.
    void setRefinementEnabled(bool isEnabled);

    /// Puts the last transcript on the clipboard, where it stays like any copied text.
    Q_INVOKABLE void copyLastTranscript();
    Q_INVOKABLE void requestAccessibility();
    Q_INVOKABLE void openCommandCenter() { m_actions.openCommandCenter(); }
    Q_INVOKABLE void openProfile() { m_actions.openProfile(); }
    Q_INVOKABLE void openSettings() { m_actions.openSettings(); }
    Q_INVOKABLE void checkForUpdates() { m_actions.checkForUpdates(); }
    Q_INVOKABLE void quit() { m_actions.quit(); }

Q_SIGNALS:
    void stateChanged();
    /// A dictation has been spoken: the keyboard belongs to the application that gets the text.
    void targetNeedsKeyboard();
    void stateLabelChanged();
    void accessibilityGrantedChanged();
    void lastTranscriptChanged();
    void uiLanguageChanged();
    void transcriptionLanguageChanged();
    void refinementEnabledChanged();

private:
    void observeFlow();
    void freeKeyboard();
    void observeSettings();
    SettingsStore &settings() const;

    const std::shared_ptr<DictationFlowManager> m_flow;
    Pasteboard &m_pasteboard;
    const Actions m_actions;
    ProfileChipModel m_profile;
};
