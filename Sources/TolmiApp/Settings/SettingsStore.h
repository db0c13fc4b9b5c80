#pragma once

#include "Foundation/Clock.h"
#include "Foundation/ObservableObject.h"
#include "Platform/BundleInfo.h"
#include "Platform/FileManager.h"
#include "Platform/UserDefaults.h"
#include "TolmiApp/Settings/AppAppearance.h"
#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Settings/DictationPerformanceMode.h"
#include "TolmiApp/Settings/OnboardingStep.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"
#include "TolmiApp/Settings/TranscriptionEngineOption.h"

#include <functional>
#include <optional>

/// Everything the user can configure, and what is remembered of the profile and the onboarding. Main thread
/// only.
///
/// The values are read from the stored defaults once, repaired and written back; from then on every
/// assignment is checked and stored at once.
class SettingsStore : public ObservableObject {
    Q_OBJECT

    /// The whisper-cli program that is started.
    TOLMI_PUBLISHED(QString, whisperBinaryPath, setWhisperBinaryPath, storeWhisperBinaryPath())
    /// The speech model; it may be missing, which the health checks tell.
    TOLMI_PUBLISHED(QString, modelPath, setModelPath, storeModelPath())
    /// The code of the language that is spoken, or "auto".
    TOLMI_PUBLISHED(QString, language, setLanguage, storeLanguage())
    /// How much work a transcription may cost.
    TOLMI_PUBLISHED(DictationPerformanceMode, performanceMode, setPerformanceMode, storePerformanceMode())
    /// What turns speech into text.
    TOLMI_PUBLISHED(
        TranscriptionEngineOption, transcriptionEngine, setTranscriptionEngine, storeTranscriptionEngine())
    /// The sound that plays while a dictation is processed.
    TOLMI_PUBLISHED(ProcessingTransitionSound, processingTransitionSound, setProcessingTransitionSound,
        storeProcessingTransitionSound())
    /// How loud that sound is, 0 to 1; other values are limited to that.
    TOLMI_PUBLISHED(double, processingTransitionSoundVolume, setProcessingTransitionSoundVolume,
        checkProcessingTransitionSoundVolume())
    /// How loud a preview of it is, 0 to 1; other values are limited to that.
    TOLMI_PUBLISHED(double, processingTransitionPreviewVolume, setProcessingTransitionPreviewVolume,
        checkProcessingTransitionPreviewVolume())
    /// The language of the interface.
    TOLMI_PUBLISHED(AppLanguage, uiLanguage, setUiLanguage, storeUiLanguage())
    /// The look of the interface.
    TOLMI_PUBLISHED(AppAppearance, appearance, setAppearance, storeAppearance())
    /// The user's name: one line of 1 to 40 characters; "User" stands for an empty one.
    TOLMI_PUBLISHED(QString, profileDisplayName, setProfileDisplayName, checkProfileDisplayName())
    /// The preset avatar, as its stored text; an unknown one becomes the default.
    TOLMI_PUBLISHED(QString, profileAvatarID, setProfileAvatarID, checkProfileAvatarID())
    /// The profile's own id, an upper-case UUID when it was made here.
    TOLMI_PUBLISHED(QString, profileID, setProfileID, checkProfileID())
    /// When the profile last changed, ISO 8601.
    TOLMI_PUBLISHED(QString, profileUpdatedAt, setProfileUpdatedAt, checkProfileUpdatedAt())
    /// How often the profile has changed, from 1.
    TOLMI_PUBLISHED(qint64, profileSyncVersion, setProfileSyncVersion, checkProfileSyncVersion())
    /// The user's own avatar, counted from the application folder.
    TOLMI_PUBLISHED(std::optional<QString>, profileAvatarImageRelativePath, setProfileAvatarImageRelativePath,
        checkProfileAvatarImageRelativePath())
    /// Its small form, counted from the application folder.
    TOLMI_PUBLISHED(std::optional<QString>, profileAvatarThumbnailRelativePath,
        setProfileAvatarThumbnailRelativePath, checkProfileAvatarThumbnailRelativePath())
    /// Whether the wizard of the first start was finished.
    TOLMI_PUBLISHED(bool, hasCompletedOnboarding, setHasCompletedOnboarding, storeHasCompletedOnboarding())
    /// When the wizard was put off, ISO 8601.
    TOLMI_PUBLISHED(
        std::optional<QString>, onboardingSkippedAt, setOnboardingSkippedAt, storeOnboardingSkippedAt())
    /// The edition of the wizard that the state belongs to, from 1.
    TOLMI_PUBLISHED(qint64, onboardingVersion, setOnboardingVersion, checkOnboardingVersion())
    /// The step at which the wizard resumes.
    TOLMI_PUBLISHED(OnboardingStep, onboardingLastStep, setOnboardingLastStep, storeOnboardingLastStep())
    /// Whether transcripts are cleaned by the language model.
    TOLMI_PUBLISHED(bool, refinementEnabled, setRefinementEnabled, storeRefinementEnabled())
    /// The language model's name at the Ollama service.
    TOLMI_PUBLISHED(QString, ollamaModel, setOllamaModel, storeOllamaModel())
    /// The address of the Ollama service as typed; it need not be valid.
    TOLMI_PUBLISHED(QString, ollamaEndpoint, setOllamaEndpoint, storeOllamaEndpoint())
    /// Seconds without an answer until refinement is given up; not limited.
    TOLMI_PUBLISHED(double, ollamaTimeout, setOllamaTimeout, storeOllamaTimeout())
    /// What the language model is told to do.
    TOLMI_PUBLISHED(QString, ollamaSystemPrompt, setOllamaSystemPrompt, storeOllamaSystemPrompt())

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
    void loadTranscription(const BundleInfo &bundleInfo);
    void loadInterface();
    void loadProfile();
    void loadOnboarding();
    void loadRefinement();
    void loadRetention();
    QString loadedWhisperBinaryPath(const BundleInfo &bundleInfo) const;
    QString loadedModelPath(const BundleInfo &bundleInfo);

    void normalizeBootstrappedState();
    void writeBack();

    void performBatchProfileUpdate(const std::function<void()> &update);
    void finalizeProfileTrackingIfNeeded();
    void markProfileChanged();
    void syncTrackedProfileState();
    void profileFieldWasStored();

    void validateCustomAvatarPathsIfNeeded(bool persistFixes);
    std::optional<FileURL> resolveProfileAssetURL(const std::optional<QString> &relativePath) const;

    QString nowISO8601() const;

    template <typename Enum>
    Enum storedCase(const QString &key) const;
    void storeOptional(const QString &key, const std::optional<QString> &value);

    void checkProcessingTransitionSoundVolume();
    void checkProcessingTransitionPreviewVolume();
    void checkProfileDisplayName();
    void checkProfileAvatarID();
    void checkProfileID();
    void checkProfileUpdatedAt();
    void checkProfileSyncVersion();
    void checkProfileAvatarImageRelativePath();
    void checkProfileAvatarThumbnailRelativePath();
    void checkOnboardingVersion();

    void storeWhisperBinaryPath();
    void storeModelPath();
    void storeLanguage();
    void storePerformanceMode();
    void storeTranscriptionEngine();
    void storeProcessingTransitionSound();
    void storeProcessingTransitionSoundVolume();
    void storeProcessingTransitionPreviewVolume();
    void storeUiLanguage();
    void storeAppearance();
    void storeProfileDisplayName();
    void storeProfileAvatarID();
    void storeProfileID();
    void storeProfileUpdatedAt();
    void storeProfileSyncVersion();
    void storeProfileAvatarImageRelativePath();
    void storeProfileAvatarThumbnailRelativePath();
    void storeHasCompletedOnboarding();
    void storeOnboardingSkippedAt();
    void storeOnboardingVersion();
    void storeOnboardingLastStep();
    void storeRefinementEnabled();
    void storeOllamaModel();
    void storeOllamaEndpoint();
    void storeOllamaTimeout();
    void storeOllamaSystemPrompt();

    UserDefaults &m_defaults;
    const FileManager &m_fileManager;
    const Clock &m_clock;
    qint64 m_audioRetentionHours = 0;
    qint64 m_audioRetentionMaxMB = 0;
    bool m_isBatchProfileUpdate = false;
    bool m_shouldTrackProfileChanges = false;
    QString m_trackedProfileDisplayName;
    QString m_trackedProfileAvatarID;
    std::optional<QString> m_trackedProfileAvatarImageRelativePath;
    std::optional<QString> m_trackedProfileAvatarThumbnailRelativePath;
};
