#pragma once

#include "Foundation/Clock.h"
#include "Foundation/ObservableObject.h"
#include "Platform/BundleInfo.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Settings/AppAppearance.h"
#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Settings/DictationPerformanceMode.h"
#include "TolmiApp/Settings/OnboardingStep.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/ProfileChangeTracker.h"
#include "TolmiApp/Settings/ProfileDisplayName.h"
#include "TolmiApp/Settings/SettingsTable.h"
#include "TolmiApp/Settings/TranscriptionEngineOption.h"
#include "TolmiCore/OllamaConfiguration.h"

/// Declares a published field of the settings and its SettingRow, of which all members but the key are
/// optional.
#define TOLMI_SETTING(type, name, setter, ...)                                                               \
    TOLMI_PUBLISHED(type, name, setter, wasAssigned(m_##name##Setting))                                      \
    Setting<type> m_##name##Setting { m_table, m_##name, [this](const type &value) { setter(value); },       \
        { __VA_ARGS__ } };

/// The user's settings, and the stored state of the profile and the onboarding. Main thread only.
///
/// The values are read from the stored defaults once, repaired and written back; later assignments are
/// checked and stored immediately.
class SettingsStore : public ObservableObject {
    Q_OBJECT

    // First, because each setting adds itself here. Settings are loaded and written back in declaration
    // order.
    SettingsTable m_table;

    /// The path of whisper-cli.
    TOLMI_SETTING(
        QString, whisperBinaryPath, setWhisperBinaryPath, .key = "tolmi.whisperBinaryPath",
        .load = [this](const auto &stored) { return loadedWhisperBinaryPath(stored); })
    /// The path of the speech model; it may not exist, which the health checks report.
    TOLMI_SETTING(
        QString, modelPath, setModelPath, .key = "tolmi.modelPath",
        .load = [this](const auto &stored) { return loadedModelPath(stored); })
    /// The code of the spoken language, or "auto".
    TOLMI_SETTING(QString, language, setLanguage, .key = "tolmi.language", .absent = QStringLiteral("ro"),
        .isWrittenBack = false)
    /// Trade-off between speed and quality of transcription.
    TOLMI_SETTING(
        DictationPerformanceMode, performanceMode, setPerformanceMode, .key = "tolmi.performanceMode")
    /// The speech-to-text engine.
    TOLMI_SETTING(TranscriptionEngineOption, transcriptionEngine, setTranscriptionEngine,
        .key = "tolmi.transcriptionEngine")
    /// The sound that plays while a dictation is processed.
    TOLMI_SETTING(ProcessingTransitionSound, processingTransitionSound, setProcessingTransitionSound,
        .key = "tolmi.processingTransitionSound")
    /// The volume of that sound, clamped to 0...1.
    TOLMI_SETTING(double, processingTransitionSoundVolume, setProcessingTransitionSoundVolume,
        .key = "tolmi.processingTransitionSoundVolume", .absent = 0.45, .repair = clampedTransitionVolume)
    /// The volume of its preview, clamped to 0...1.
    TOLMI_SETTING(double, processingTransitionPreviewVolume, setProcessingTransitionPreviewVolume,
        .key = "tolmi.processingTransitionPreviewVolume", .absent = 0.7, .repair = clampedTransitionVolume)
    /// The interface language.
    TOLMI_SETTING(AppLanguage, uiLanguage, setUiLanguage, .key = "tolmi.uiLanguage")
    /// The colour scheme.
    TOLMI_SETTING(AppAppearance, appearance, setAppearance, .key = "tolmi.appearance")
    /// The user's name: one line of 1 to 40 characters; "User" if empty.
    TOLMI_SETTING(QString, profileDisplayName, setProfileDisplayName, .key = "tolmi.profileDisplayName",
        .repair = sanitizedProfileDisplayName, .isOfProfile = true)
    /// The stored string of the preset avatar; an unknown one becomes the default.
    TOLMI_SETTING(QString, profileAvatarID, setProfileAvatarID, .key = "tolmi.profileAvatarID",
        .repair = normalizedProfileAvatarID, .isOfProfile = true)
    /// The profile's ID, an upper-case UUID when created here.
    TOLMI_SETTING(
        QString, profileID, setProfileID, .key = "tolmi.profile.id", .repair = repairedProfileID,
        .load = [](const auto &stored) { return stored ? *stored : repairedProfileID({}); })
    /// When the profile last changed, ISO 8601.
    TOLMI_SETTING(
        QString, profileUpdatedAt, setProfileUpdatedAt, .key = "tolmi.profile.updatedAt",
        .repair = [this](const auto &date) { return date.isEmpty() ? nowISO8601() : date; },
        .load = [this](const auto &stored) { return stored ? *stored : nowISO8601(); })
    /// The number of profile changes, starting at 1.
    TOLMI_SETTING(qint64, profileSyncVersion, setProfileSyncVersion, .key = "tolmi.profile.syncVersion",
        .absent = 1, .repair = atLeastOne)
    /// The custom avatar, relative to the application folder.
    TOLMI_SETTING(std::optional<QString>, profileAvatarImageRelativePath, setProfileAvatarImageRelativePath,
        .key = "tolmi.profile.avatarImageRelativePath", .isOfProfile = true)
    /// Its thumbnail, relative to the application folder.
    TOLMI_SETTING(std::optional<QString>, profileAvatarThumbnailRelativePath,
        setProfileAvatarThumbnailRelativePath, .key = "tolmi.profile.avatarThumbnailRelativePath",
        .isOfProfile = true)
    /// Whether the first-start wizard was completed.
    TOLMI_SETTING(
        bool, hasCompletedOnboarding, setHasCompletedOnboarding, .key = "tolmi.onboarding.completed")
    /// When the wizard was skipped, ISO 8601.
    TOLMI_SETTING(std::optional<QString>, onboardingSkippedAt, setOnboardingSkippedAt,
        .key = "tolmi.onboarding.skippedAt")
    /// The version of the wizard that the state refers to, starting at 1.
    TOLMI_SETTING(qint64, onboardingVersion, setOnboardingVersion, .key = "tolmi.onboarding.version",
        .absent = currentOnboardingVersion, .repair = atLeastOne)
    /// The step at which the wizard resumes.
    TOLMI_SETTING(
        OnboardingStep, onboardingLastStep, setOnboardingLastStep, .key = "tolmi.onboarding.lastStep")
    /// Whether the language model refines transcripts.
    TOLMI_SETTING(bool, refinementEnabled, setRefinementEnabled, .key = "tolmi.refinementEnabled",
        .absent = true, .isWrittenBack = false)
    /// The name of the Ollama model.
    TOLMI_SETTING(QString, ollamaModel, setOllamaModel, .key = "tolmi.ollamaModel",
        .absent = OllamaConfiguration().model, .isWrittenBack = false)
    /// The address of the Ollama service as typed; it need not be valid.
    TOLMI_SETTING(QString, ollamaEndpoint, setOllamaEndpoint, .key = "tolmi.ollamaEndpoint",
        .absent = OllamaConfiguration::defaultEndpoint, .isWrittenBack = false)
    /// The time-out of refinement in seconds; not clamped.
    TOLMI_SETTING(double, ollamaTimeout, setOllamaTimeout, .key = "tolmi.ollamaTimeout",
        .absent = OllamaConfiguration().timeout, .isWrittenBack = false)
    /// The instructions for the language model.
    TOLMI_SETTING(QString, ollamaSystemPrompt, setOllamaSystemPrompt, .key = "tolmi.ollamaSystemPrompt",
        .absent = OllamaConfiguration::defaultSystemPrompt, .isWrittenBack = false)

public:
    /// The version of the wizard in this program.
    static constexpr qint64 currentOnboardingVersion = 1;

    /// The references must outlive the store. `bundleInfo` is for the search for the default paths.
    SettingsStore(UserDefaults &defaults, const FileManager &fileManager, const Clock &clock,
        const BundleInfo &bundleInfo);

    /// Hours until a recording is removed, at least 1. Not in the settings page.
    qint64 audioRetentionHours() const { return m_audioRetentionHours; }
    /// Total size of recordings in MB above which old ones are removed, at least 1. Not in the settings page.
    qint64 audioRetentionMaxMB() const { return m_audioRetentionMaxMB; }

    /// Whether to remind the user of the unfinished wizard.
    bool shouldShowOnboardingReminder() const;

    /// The custom avatar, if both of its files exist; otherwise clears the stored paths.
    std::optional<FileURL> resolvedCustomAvatarImageURL();
    /// Its thumbnail; see above.
    std::optional<FileURL> resolvedCustomAvatarThumbnailURL();

    /// Sets a custom avatar, as one change of the profile.
    void setCustomAvatar(const QString &imageRelativePath, const QString &thumbnailRelativePath);

    /// Clears the custom avatar; the files are kept. Without `trackProfileChange` this is a repair, not a
    /// change of the profile.
    void clearCustomAvatar(bool trackProfileChange = true);

    /// Records that the wizard was skipped at `step`.
    void markOnboardingSkipped(OnboardingStep step);
    /// Records that the wizard advanced to `step`; does nothing once it is completed.
    void markOnboardingAdvanced(OnboardingStep step);
    void markOnboardingCompleted();
    /// Makes the wizard start over.
    void resetOnboarding();

    /// `volume` clamped to 0...1.
    static double clampedTransitionVolume(double volume);

private:
    void wasAssigned(AbstractSetting &setting);
    QString loadedWhisperBinaryPath(const std::optional<QString> &stored) const;
    QString loadedModelPath(const std::optional<QString> &stored);
    QString storedAtOnce(const QString &modelPath);
    static QString repairedProfileID(const QString &id);
    static qint64 atLeastOne(qint64 value);

    void normalizeBootstrappedState();

    void markProfileChanged();
    void validateCustomAvatarPathsIfNeeded(bool persistFixes);
    std::optional<FileURL> resolveProfileAssetURL(const std::optional<QString> &relativePath) const;

    QString nowISO8601() const;

    qint64 m_audioRetentionHours = 0;
    Setting<qint64> m_audioRetentionHoursSetting { m_table, m_audioRetentionHours, {},
        { .key = "tolmi.audioRetentionHours", .absent = 24, .repair = atLeastOne } };
    qint64 m_audioRetentionMaxMB = 0;
    Setting<qint64> m_audioRetentionMaxMBSetting { m_table, m_audioRetentionMaxMB, {},
        { .key = "tolmi.audioRetentionMaxMB", .absent = 2048, .repair = atLeastOne } };

    const FileManager &m_fileManager;
    const Clock &m_clock;
    const BundleInfo m_bundleInfo;
    ProfileChangeTracker m_profileChanges;
};
