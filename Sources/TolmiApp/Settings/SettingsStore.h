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

/// Declares a published field of the settings and its row of the table: the members of a SettingRow, of which
/// all but the key may be left out.
#define TOLMI_SETTING(type, name, setter, ...)                                                               \
    TOLMI_PUBLISHED(type, name, setter, wasAssigned(m_##name##Setting))                                      \
    Setting<type> m_##name##Setting { m_table, m_##name, [this](const type &value) { setter(value); },       \
        { __VA_ARGS__ } };

/// Everything the user can configure, and what is remembered of the profile and the onboarding. Main thread
/// only.
///
/// The values are read from the stored defaults once, repaired and written back; from then on every
/// assignment is checked and stored at once.
class SettingsStore : public ObservableObject {
    Q_OBJECT

    // First, since each setting enters itself here; they are loaded and written back in the order of their
    // declarations.
    SettingsTable m_table;

    /// The whisper-cli program that is started.
    TOLMI_SETTING(
        QString, whisperBinaryPath, setWhisperBinaryPath, .key = "tolmi.whisperBinaryPath",
        .load = [this](const auto &stored) { return loadedWhisperBinaryPath(stored); })
    /// The speech model; it may be missing, which the health checks tell.
    TOLMI_SETTING(
        QString, modelPath, setModelPath, .key = "tolmi.modelPath",
        .load = [this](const auto &stored) { return loadedModelPath(stored); })
    /// The code of the language that is spoken, or "auto".
    TOLMI_SETTING(QString, language, setLanguage, .key = "tolmi.language", .absent = QStringLiteral("ro"),
        .isWrittenBack = false)
    /// How much work a transcription may cost.
    TOLMI_SETTING(
        DictationPerformanceMode, performanceMode, setPerformanceMode, .key = "tolmi.performanceMode")
    /// What turns speech into text.
    TOLMI_SETTING(TranscriptionEngineOption, transcriptionEngine, setTranscriptionEngine,
        .key = "tolmi.transcriptionEngine")
    /// The sound that plays while a dictation is processed.
    TOLMI_SETTING(ProcessingTransitionSound, processingTransitionSound, setProcessingTransitionSound,
        .key = "tolmi.processingTransitionSound")
    /// How loud that sound is, 0 to 1; other values are limited to that.
    TOLMI_SETTING(double, processingTransitionSoundVolume, setProcessingTransitionSoundVolume,
        .key = "tolmi.processingTransitionSoundVolume", .absent = 0.45, .repair = clampedTransitionVolume)
    /// How loud a preview of it is, 0 to 1; other values are limited to that.
    TOLMI_SETTING(double, processingTransitionPreviewVolume, setProcessingTransitionPreviewVolume,
        .key = "tolmi.processingTransitionPreviewVolume", .absent = 0.7, .repair = clampedTransitionVolume)
    /// The language of the interface.
    TOLMI_SETTING(AppLanguage, uiLanguage, setUiLanguage, .key = "tolmi.uiLanguage")
    /// The look of the interface.
    TOLMI_SETTING(AppAppearance, appearance, setAppearance, .key = "tolmi.appearance")
    /// The user's name: one line of 1 to 40 characters; "User" stands for an empty one.
    TOLMI_SETTING(QString, profileDisplayName, setProfileDisplayName, .key = "tolmi.profileDisplayName",
        .repair = sanitizedProfileDisplayName, .isOfProfile = true)
    /// The preset avatar, as its stored text; an unknown one becomes the default.
    TOLMI_SETTING(QString, profileAvatarID, setProfileAvatarID, .key = "tolmi.profileAvatarID",
        .repair = normalizedProfileAvatarID, .isOfProfile = true)
    /// The profile's own id, an upper-case UUID when it was made here.
    TOLMI_SETTING(
        QString, profileID, setProfileID, .key = "tolmi.profile.id", .repair = repairedProfileID,
        .load = [](const auto &stored) { return stored ? *stored : repairedProfileID({}); })
    /// When the profile last changed, ISO 8601.
    TOLMI_SETTING(
        QString, profileUpdatedAt, setProfileUpdatedAt, .key = "tolmi.profile.updatedAt",
        .repair = [this](const auto &date) { return date.isEmpty() ? nowISO8601() : date; },
        .load = [this](const auto &stored) { return stored ? *stored : nowISO8601(); })
    /// How often the profile has changed, from 1.
    TOLMI_SETTING(qint64, profileSyncVersion, setProfileSyncVersion, .key = "tolmi.profile.syncVersion",
        .absent = 1, .repair = atLeastOne)
    /// The user's own avatar, counted from the application folder.
    TOLMI_SETTING(std::optional<QString>, profileAvatarImageRelativePath, setProfileAvatarImageRelativePath,
        .key = "tolmi.profile.avatarImageRelativePath", .isOfProfile = true)
    /// Its small form, counted from the application folder.
    TOLMI_SETTING(std::optional<QString>, profileAvatarThumbnailRelativePath,
        setProfileAvatarThumbnailRelativePath, .key = "tolmi.profile.avatarThumbnailRelativePath",
        .isOfProfile = true)
    /// Whether the wizard of the first start was finished.
    TOLMI_SETTING(
        bool, hasCompletedOnboarding, setHasCompletedOnboarding, .key = "tolmi.onboarding.completed")
    /// When the wizard was put off, ISO 8601.
    TOLMI_SETTING(std::optional<QString>, onboardingSkippedAt, setOnboardingSkippedAt,
        .key = "tolmi.onboarding.skippedAt")
    /// The edition of the wizard that the state belongs to, from 1.
    TOLMI_SETTING(qint64, onboardingVersion, setOnboardingVersion, .key = "tolmi.onboarding.version",
        .absent = currentOnboardingVersion, .repair = atLeastOne)
    /// The step at which the wizard resumes.
    TOLMI_SETTING(
        OnboardingStep, onboardingLastStep, setOnboardingLastStep, .key = "tolmi.onboarding.lastStep")
    /// Whether transcripts are cleaned by the language model.
    TOLMI_SETTING(bool, refinementEnabled, setRefinementEnabled, .key = "tolmi.refinementEnabled",
        .absent = true, .isWrittenBack = false)
    /// The language model's name at the Ollama service.
    TOLMI_SETTING(QString, ollamaModel, setOllamaModel, .key = "tolmi.ollamaModel",
        .absent = OllamaConfiguration().model, .isWrittenBack = false)
    /// The address of the Ollama service as typed; it need not be valid.
    TOLMI_SETTING(QString, ollamaEndpoint, setOllamaEndpoint, .key = "tolmi.ollamaEndpoint",
        .absent = OllamaConfiguration::defaultEndpoint, .isWrittenBack = false)
    /// Seconds without an answer until refinement is given up; not limited.
    TOLMI_SETTING(double, ollamaTimeout, setOllamaTimeout, .key = "tolmi.ollamaTimeout",
        .absent = OllamaConfiguration().timeout, .isWrittenBack = false)
    /// What the language model is told to do.
    TOLMI_SETTING(QString, ollamaSystemPrompt, setOllamaSystemPrompt, .key = "tolmi.ollamaSystemPrompt",
        .absent = OllamaConfiguration::defaultSystemPrompt, .isWrittenBack = false)

public:
    /// The edition of the wizard that this program shows.
    static constexpr qint64 currentOnboardingVersion = 1;

    /// The references must outlive the store. `bundleInfo` serves the search for the default paths.
    SettingsStore(UserDefaults &defaults, const FileManager &fileManager, const Clock &clock,
        const BundleInfo &bundleInfo);

    /// Hours until a recording is removed, at least 1. Has no interface.
    qint64 audioRetentionHours() const { return m_audioRetentionHours; }
    /// Size of all recordings in MB from which old ones are removed, at least 1. Has no interface.
    qint64 audioRetentionMaxMB() const { return m_audioRetentionMaxMB; }

    /// Whether the user should be asked to finish the wizard.
    bool shouldShowOnboardingReminder() const;

    /// The user's own avatar, if both of its files are there; a broken pair is forgotten on the way.
    std::optional<FileURL> resolvedCustomAvatarImageURL();
    /// The small form of the avatar; see above.
    std::optional<FileURL> resolvedCustomAvatarThumbnailURL();

    /// Takes a new avatar as one change of the profile.
    void setCustomAvatar(const QString &imageRelativePath, const QString &thumbnailRelativePath);

    /// Forgets the user's own avatar; the files stay. Without `trackProfileChange` it counts as a repair and
    /// not as a change of the profile.
    void clearCustomAvatar(bool trackProfileChange = true);

    /// The wizard was put off at `step`.
    void markOnboardingSkipped(OnboardingStep step);
    /// The wizard went on to `step`; nothing happens once it was finished.
    void markOnboardingAdvanced(OnboardingStep step);
    void markOnboardingCompleted();
    /// The wizard starts over.
    void resetOnboarding();

    /// `volume` limited to 0...1.
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
