#pragma once

#include "Platform/SystemSound.h"
#include "TolmiApp/Navigation/StudioDestination.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Updates/AppUpdater.h"

#include <QLocale>
#include <QVariant>

#include <functional>
#include <memory>

/// What the settings workspace adds to the settings: picker options, formatted numbers and the sound preview.
/// Edits are applied immediately.
class SettingsModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(SettingsStore *settings READ settings CONSTANT)
    Q_PROPERTY(AppUpdater *appUpdater READ appUpdater CONSTANT)
    /// The options of each picker, named in the interface language.
    Q_PROPERTY(QVariantList appearanceOptions READ appearanceOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList uiLanguageOptions READ uiLanguageOptions NOTIFY optionsChanged)
    Q_PROPERTY(
        QVariantList transcriptionLanguageOptions READ transcriptionLanguageOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList transcriptionEngineOptions READ transcriptionEngineOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList performanceModeOptions READ performanceModeOptions NOTIFY optionsChanged)
    Q_PROPERTY(QVariantList transitionSoundOptions READ transitionSoundOptions NOTIFY optionsChanged)
    /// The selected options as stored strings.
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
    /// The time-out of refinement in seconds, in the locale's format. Text that is not a number is ignored.
    Q_PROPERTY(QString ollamaTimeoutText READ ollamaTimeoutText WRITE setOllamaTimeoutText NOTIFY
            ollamaTimeoutTextChanged)

public:
    /// What the model uses; all must outlive it.
    struct Dependencies {
        SettingsStore &settings;
        AppUpdater &appUpdater;
        SystemSounds &sounds;
        /// For numbers, independent of the interface language.
        QLocale locale;
        /// Opens another workspace.
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

    /// A volume from 0 to 1 as a whole percentage: "35%".
    Q_INVOKABLE static QString volumeText(double value);

    /// Plays the chosen sound once from its start, at the preview volume, after stopping a preview that still
    /// plays.
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
    /// The latest preview, which may have ended.
    std::unique_ptr<SystemSound> m_previewSound;
};
