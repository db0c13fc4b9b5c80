#pragma once

#include "Platform/SystemSound.h"
#include "TolmiApp/Navigation/StudioDestination.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Updates/AppUpdater.h"

#include <QLocale>
#include <QVariant>

#include <functional>
#include <memory>

/// What the settings workspace adds to the settings themselves: rows of pickers, texts of numbers, and the
/// preview of a sound. Every edit goes into the settings at once.
class SettingsModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(SettingsStore *settings READ settings CONSTANT)
    Q_PROPERTY(AppUpdater *appUpdater READ appUpdater CONSTANT)
    /// The rows of each picker, named in the language of the interface.
    Q_PROPERTY(QVariantList appearanceOptions READ appearanceOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList uiLanguageOptions READ uiLanguageOptions NOTIFY optionsChanged)
    Q_PROPERTY(
        QVariantList transcriptionLanguageOptions READ transcriptionLanguageOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList transcriptionEngineOptions READ transcriptionEngineOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList performanceModeOptions READ performanceModeOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList transitionSoundOptions READ transitionSoundOptions NOTIFY optionsChanged)
    /// What is chosen in the pickers, as it is stored.
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
    Q_PROPERTY(QString uiLanguage READ uiLanguage WRITE setUiLanguage NOTIFY optionsChanged)
    Q_PROPERTY(QString transcriptionEngine READ transcriptionEngine WRITE setTranscriptionEngine NOTIFY
            transcriptionEngineChanged)
    Q_PROPERTY(
        QString performanceMode READ performanceMode WRITE setPerformanceMode NOTIFY performanceModeChanged)
    Q_PROPERTY(
        QString transitionSound READ transitionSound WRITE setTransitionSound NOTIFY transitionSoundChanged)
    /// False for silence.
    Q_PROPERTY(bool canPreviewTransitionSound READ canPreviewTransitionSound NOTIFY transitionSoundChanged)
    /// The seconds until refinement is given up, in the locale's format. A text that is no number changes
    /// nothing.
    Q_PROPERTY(QString ollamaTimeoutText READ ollamaTimeoutText WRITE setOllamaTimeoutText NOTIFY
            ollamaTimeoutTextChanged)

public:
    /// What the model works on; all of it outlives the model.
    struct Dependencies {
        SettingsStore &settings;
        AppUpdater &appUpdater;
        SystemSounds &sounds;
        /// Of numbers, whatever the language of the interface.
        QLocale locale;
        /// Leads to another workspace.
        std::function<void(StudioDestination)> onNavigate;
    };

    explicit SettingsModel(Dependencies dependencies, QObject *parent = nullptr);

    SettingsStore *settings() const { return &m_dependencies.settings; }
    AppUpdater *appUpdater() const { return &m_dependencies.appUpdater; }

    QVariantList appearanceOptions() const;
    QVariantList uiLanguageOptions() const;
    QVariantList transcriptionLanguageOptions() const;
    QVariantList transcriptionEngineOptions() const;
    QVariantList performanceModeOptions() const;
    QVariantList transitionSoundOptions() const;

    QString appearance() const;
    void setAppearance(const QString &stored);
    QString uiLanguage() const;
    void setUiLanguage(const QString &stored);
    QString transcriptionEngine() const;
    void setTranscriptionEngine(const QString &stored);
    QString performanceMode() const;
    void setPerformanceMode(const QString &stored);
    QString transitionSound() const;
    void setTransitionSound(const QString &stored);
    bool canPreviewTransitionSound() const;
    QString ollamaTimeoutText() const;
    void setOllamaTimeoutText(const QString &text);

    /// A volume from 0 to 1 as whole percents: "35%".
    Q_INVOKABLE static QString volumeText(double value);

    /// Plays the chosen sound once from its start, as loud as previews are set to be; one that still plays is
    /// stopped.
    Q_INVOKABLE void previewTransitionSound();

    Q_INVOKABLE void resetSystemPrompt();
    Q_INVOKABLE void openProfile();

Q_SIGNALS:
    void optionsChanged();
    void appearanceChanged();
    void transcriptionEngineChanged();
    void performanceModeChanged();
    void transitionSoundChanged();
    void ollamaTimeoutTextChanged();

private:
    AppLanguage language() const { return m_dependencies.settings.uiLanguage(); }

    const Dependencies m_dependencies;
    /// The latest preview, ended or not.
    std::unique_ptr<SystemSound> m_previewSound;
};
