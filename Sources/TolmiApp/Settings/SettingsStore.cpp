#include "TolmiApp/Settings/SettingsStore.h"

#include "Foundation/Log.h"
#include "Foundation/Uuid.h"
#include "Text/Text.h"
#include "TolmiApp/Settings/ApplicationFolder.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/ProfileDisplayName.h"
#include "TolmiCore/OllamaConfiguration.h"
#include "TolmiCore/TolmiDefaultPaths.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {
namespace Keys {
constexpr QLatin1String whisperBinaryPath("tolmi.whisperBinaryPath");
constexpr QLatin1String modelPath("tolmi.modelPath");
constexpr QLatin1String language("tolmi.language");
constexpr QLatin1String performanceMode("tolmi.performanceMode");
constexpr QLatin1String transcriptionEngine("tolmi.transcriptionEngine");
constexpr QLatin1String processingTransitionSound("tolmi.processingTransitionSound");
constexpr QLatin1String processingTransitionSoundVolume("tolmi.processingTransitionSoundVolume");
constexpr QLatin1String processingTransitionPreviewVolume("tolmi.processingTransitionPreviewVolume");
constexpr QLatin1String uiLanguage("tolmi.uiLanguage");
constexpr QLatin1String appearance("tolmi.appearance");
constexpr QLatin1String profileDisplayName("tolmi.profileDisplayName");
constexpr QLatin1String profileAvatarID("tolmi.profileAvatarID");
constexpr QLatin1String profileID("tolmi.profile.id");
constexpr QLatin1String profileUpdatedAt("tolmi.profile.updatedAt");
constexpr QLatin1String profileSyncVersion("tolmi.profile.syncVersion");
constexpr QLatin1String profileAvatarImageRelativePath("tolmi.profile.avatarImageRelativePath");
constexpr QLatin1String profileAvatarThumbnailRelativePath("tolmi.profile.avatarThumbnailRelativePath");
constexpr QLatin1String hasCompletedOnboarding("tolmi.onboarding.completed");
constexpr QLatin1String onboardingSkippedAt("tolmi.onboarding.skippedAt");
constexpr QLatin1String onboardingVersion("tolmi.onboarding.version");
constexpr QLatin1String onboardingLastStep("tolmi.onboarding.lastStep");
constexpr QLatin1String refinementEnabled("tolmi.refinementEnabled");
constexpr QLatin1String ollamaModel("tolmi.ollamaModel");
constexpr QLatin1String ollamaEndpoint("tolmi.ollamaEndpoint");
constexpr QLatin1String ollamaTimeout("tolmi.ollamaTimeout");
constexpr QLatin1String ollamaSystemPrompt("tolmi.ollamaSystemPrompt");
constexpr QLatin1String audioRetentionHours("tolmi.audioRetentionHours");
constexpr QLatin1String audioRetentionMaxMB("tolmi.audioRetentionMaxMB");
} // namespace Keys

constexpr qint64 atLeastOne(qint64 value) {
    return std::max<qint64>(1, value);
}

/// ISO 8601 in UTC with exactly three digits of the second's fraction, cut off and not rounded.
QString iso8601Text(Date date) {
    // Taken apart first, because a product of the whole could round up to the next millisecond.
    const double wholeSeconds = std::floor(date.secondsSinceReferenceDate);
    const double milliseconds = std::floor((date.secondsSinceReferenceDate - wholeSeconds) * 1000);
    const qint64 sinceEpoch = qint64(Date { wholeSeconds }.secondsSince1970()) * 1000 + qint64(milliseconds);
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch, Qt::UTC).toString(Qt::ISODateWithMs);
}
} // namespace

SettingsStore::SettingsStore(
    UserDefaults &defaults, const FileManager &fileManager, const Clock &clock, const BundleInfo &bundleInfo)
    : m_defaults(defaults)
    , m_fileManager(fileManager)
    , m_clock(clock) {
    loadTranscription(bundleInfo);
    loadInterface();
    loadProfile();
    loadOnboarding();
    loadRefinement();
    loadRetention();
    normalizeBootstrappedState();
    writeBack();
    syncTrackedProfileState();
    m_shouldTrackProfileChanges = true;
}

bool SettingsStore::shouldShowOnboardingReminder() const {
    return !m_hasCompletedOnboarding && m_onboardingVersion == currentOnboardingVersion;
}

std::optional<FileURL> SettingsStore::resolvedCustomAvatarImageURL() {
    validateCustomAvatarPathsIfNeeded(true);
    return resolveProfileAssetURL(m_profileAvatarImageRelativePath);
}

std::optional<FileURL> SettingsStore::resolvedCustomAvatarThumbnailURL() {
    validateCustomAvatarPathsIfNeeded(true);
    return resolveProfileAssetURL(m_profileAvatarThumbnailRelativePath);
}

void SettingsStore::setCustomAvatar(const QString &imageRelativePath, const QString &thumbnailRelativePath) {
    performBatchProfileUpdate([&] {
        setProfileAvatarImageRelativePath(imageRelativePath);
        setProfileAvatarThumbnailRelativePath(thumbnailRelativePath);
    });
}

void SettingsStore::clearCustomAvatar(bool trackProfileChange) {
    const bool wasTracking = m_shouldTrackProfileChanges;
    if (!trackProfileChange)
        m_shouldTrackProfileChanges = false;
    performBatchProfileUpdate([this] {
        setProfileAvatarImageRelativePath(std::nullopt);
        setProfileAvatarThumbnailRelativePath(std::nullopt);
    });
    if (!trackProfileChange) {
        m_shouldTrackProfileChanges = wasTracking;
        syncTrackedProfileState();
    }
}

void SettingsStore::markOnboardingSkipped(OnboardingStep step) {
    setHasCompletedOnboarding(false);
    setOnboardingLastStep(step);
    setOnboardingSkippedAt(nowISO8601());
}

void SettingsStore::markOnboardingAdvanced(OnboardingStep step) {
    if (!m_hasCompletedOnboarding)
        setOnboardingLastStep(step);
}

void SettingsStore::markOnboardingCompleted() {
    setHasCompletedOnboarding(true);
    setOnboardingLastStep(OnboardingStep::Completed);
    setOnboardingSkippedAt(std::nullopt);
}

void SettingsStore::resetOnboarding() {
    setHasCompletedOnboarding(false);
    setOnboardingSkippedAt(std::nullopt);
    setOnboardingLastStep(OnboardingStep::Profile);
    setOnboardingVersion(currentOnboardingVersion);
}

double SettingsStore::clampedTransitionVolume(double volume) {
    return std::min(1.0, std::max(0.0, volume));
}

// The first assignments go to the fields directly: nothing is stored and nobody is told yet.

void SettingsStore::loadTranscription(const BundleInfo &bundleInfo) {
    m_whisperBinaryPath = loadedWhisperBinaryPath(bundleInfo);
    m_modelPath = loadedModelPath(bundleInfo);
    m_language = m_defaults.string(Keys::language).value_or(QStringLiteral("ro"));
    m_performanceMode = storedCase<DictationPerformanceMode>(Keys::performanceMode);
    m_transcriptionEngine = storedCase<TranscriptionEngineOption>(Keys::transcriptionEngine);
}

void SettingsStore::loadInterface() {
    m_processingTransitionSound = storedCase<ProcessingTransitionSound>(Keys::processingTransitionSound);
    m_processingTransitionSoundVolume = clampedTransitionVolume(
        m_defaults.doubleValue(Keys::processingTransitionSoundVolume).value_or(0.45));
    m_processingTransitionPreviewVolume = clampedTransitionVolume(
        m_defaults.doubleValue(Keys::processingTransitionPreviewVolume).value_or(0.7));
    m_uiLanguage = storedCase<AppLanguage>(Keys::uiLanguage);
    m_appearance = storedCase<AppAppearance>(Keys::appearance);
}

void SettingsStore::loadProfile() {
    m_profileDisplayName
        = sanitizedProfileDisplayName(m_defaults.string(Keys::profileDisplayName).value_or(QString()));
    m_profileAvatarID
        = normalizedProfileAvatarID(m_defaults.string(Keys::profileAvatarID).value_or(QString()));
    const std::optional<QString> id = m_defaults.string(Keys::profileID);
    m_profileID = id ? *id : uuidString(QUuid::createUuid());
    m_profileUpdatedAt = m_defaults.string(Keys::profileUpdatedAt).value_or(nowISO8601());
    m_profileSyncVersion = atLeastOne(m_defaults.integer(Keys::profileSyncVersion).value_or(1));
    m_profileAvatarImageRelativePath = m_defaults.string(Keys::profileAvatarImageRelativePath);
    m_profileAvatarThumbnailRelativePath = m_defaults.string(Keys::profileAvatarThumbnailRelativePath);
}

void SettingsStore::loadOnboarding() {
    m_hasCompletedOnboarding = m_defaults.boolean(Keys::hasCompletedOnboarding).value_or(false);
    m_onboardingSkippedAt = m_defaults.string(Keys::onboardingSkippedAt);
    m_onboardingVersion
        = atLeastOne(m_defaults.integer(Keys::onboardingVersion).value_or(currentOnboardingVersion));
    m_onboardingLastStep = storedCase<OnboardingStep>(Keys::onboardingLastStep);
}

void SettingsStore::loadRefinement() {
    const OllamaConfiguration standard;
    m_refinementEnabled = m_defaults.boolean(Keys::refinementEnabled).value_or(true);
    m_ollamaModel = m_defaults.string(Keys::ollamaModel).value_or(standard.model);
    m_ollamaEndpoint = m_defaults.string(Keys::ollamaEndpoint).value_or(OllamaConfiguration::defaultEndpoint);
    m_ollamaTimeout = m_defaults.doubleValue(Keys::ollamaTimeout).value_or(standard.timeout);
    m_ollamaSystemPrompt
        = m_defaults.string(Keys::ollamaSystemPrompt).value_or(OllamaConfiguration::defaultSystemPrompt);
}

void SettingsStore::loadRetention() {
    m_audioRetentionHours = atLeastOne(m_defaults.integer(Keys::audioRetentionHours).value_or(24));
    m_audioRetentionMaxMB = atLeastOne(m_defaults.integer(Keys::audioRetentionMaxMB).value_or(2048));
}

QString SettingsStore::loadedWhisperBinaryPath(const BundleInfo &bundleInfo) const {
    const std::optional<QString> stored = m_defaults.string(Keys::whisperBinaryPath);
    if (stored && m_fileManager.isExecutableFile(*stored))
        return *stored;
    return TolmiDefaultPaths::defaultWhisperBinaryURL({ m_fileManager, bundleInfo }).path();
}

// Users of the first releases have the small English model stored; they move to the large one once it lies
// beside it.
QString SettingsStore::loadedModelPath(const BundleInfo &bundleInfo) {
    const QString standard = TolmiDefaultPaths::defaultModelURL({ m_fileManager, bundleInfo }).path();
    const std::optional<QString> stored = m_defaults.string(Keys::modelPath);
    if (!stored)
        return standard;
    const FileURL storedURL(*stored);
    const QString large = storedURL.deletingLastPathComponent()
                              .appendingPathComponent(QStringLiteral("ggml-large-v3.bin"))
                              .path();
    if (storedURL.lastPathComponent() == u"ggml-base.en.bin" && m_fileManager.fileExists(large)) {
        m_defaults.set(Keys::modelPath, large);
        return large;
    }
    if (m_fileManager.fileExists(*stored))
        return *stored;
    if (m_fileManager.fileExists(standard)) {
        m_defaults.set(Keys::modelPath, standard);
        return standard;
    }
    return *stored;
}

void SettingsStore::normalizeBootstrappedState() {
    if (Text::trimmed(m_profileID).isEmpty())
        setProfileID(uuidString(QUuid::createUuid()));
    if (m_profileUpdatedAt.isEmpty())
        setProfileUpdatedAt(nowISO8601());
    setProfileSyncVersion(atLeastOne(m_profileSyncVersion));
    setOnboardingVersion(atLeastOne(m_onboardingVersion));
    if (m_hasCompletedOnboarding) {
        setOnboardingLastStep(OnboardingStep::Completed);
        setOnboardingSkippedAt(std::nullopt);
    }
    validateCustomAvatarPathsIfNeeded(true);
}

// The language and the refinement stay unstored until the user first changes them, so that a better default
// of a later release reaches everyone else.
void SettingsStore::writeBack() {
    storeWhisperBinaryPath();
    storeModelPath();
    storePerformanceMode();
    storeTranscriptionEngine();
    storeProcessingTransitionSound();
    storeProcessingTransitionSoundVolume();
    storeProcessingTransitionPreviewVolume();
    storeUiLanguage();
    storeAppearance();
    storeProfileDisplayName();
    storeProfileAvatarID();
    storeProfileID();
    storeProfileUpdatedAt();
    storeProfileSyncVersion();
    storeProfileAvatarImageRelativePath();
    storeProfileAvatarThumbnailRelativePath();
    storeHasCompletedOnboarding();
    storeOnboardingSkippedAt();
    storeOnboardingVersion();
    storeOnboardingLastStep();
    m_defaults.set(Keys::audioRetentionHours, m_audioRetentionHours);
    m_defaults.set(Keys::audioRetentionMaxMB, m_audioRetentionMaxMB);
}

void SettingsStore::performBatchProfileUpdate(const std::function<void()> &update) {
    const bool wasBatch = std::exchange(m_isBatchProfileUpdate, true);
    update();
    m_isBatchProfileUpdate = wasBatch;
    if (!m_isBatchProfileUpdate)
        finalizeProfileTrackingIfNeeded();
}

void SettingsStore::finalizeProfileTrackingIfNeeded() {
    const bool hasChanged = m_profileDisplayName != m_trackedProfileDisplayName
        || m_profileAvatarID != m_trackedProfileAvatarID
        || m_profileAvatarImageRelativePath != m_trackedProfileAvatarImageRelativePath
        || m_profileAvatarThumbnailRelativePath != m_trackedProfileAvatarThumbnailRelativePath;
    syncTrackedProfileState();
    if (hasChanged && m_shouldTrackProfileChanges)
        markProfileChanged();
}

void SettingsStore::markProfileChanged() {
    if (m_profileSyncVersion == std::numeric_limits<qint64>::max())
        fatalError(QStringLiteral("Tolmi: the version of the profile cannot grow any further"));
    setProfileSyncVersion(m_profileSyncVersion + 1);
    setProfileUpdatedAt(nowISO8601());
}

void SettingsStore::syncTrackedProfileState() {
    m_trackedProfileDisplayName = m_profileDisplayName;
    m_trackedProfileAvatarID = m_profileAvatarID;
    m_trackedProfileAvatarImageRelativePath = m_profileAvatarImageRelativePath;
    m_trackedProfileAvatarThumbnailRelativePath = m_profileAvatarThumbnailRelativePath;
}

void SettingsStore::profileFieldWasStored() {
    if (!m_isBatchProfileUpdate)
        finalizeProfileTrackingIfNeeded();
}

void SettingsStore::validateCustomAvatarPathsIfNeeded(bool persistFixes) {
    const auto &image = m_profileAvatarImageRelativePath;
    const auto &thumbnail = m_profileAvatarThumbnailRelativePath;
    if (!image && !thumbnail)
        return;
    if (image && thumbnail && resolveProfileAssetURL(image) && resolveProfileAssetURL(thumbnail))
        return;
    clearCustomAvatar(false);
    if (persistFixes) {
        m_defaults.removeObject(Keys::profileAvatarImageRelativePath);
        m_defaults.removeObject(Keys::profileAvatarThumbnailRelativePath);
    }
}

std::optional<FileURL> SettingsStore::resolveProfileAssetURL(
    const std::optional<QString> &relativePath) const {
    if (!staysInFolder(relativePath))
        return std::nullopt;
    const FileURL url = tolmiRootDirectoryURL(m_fileManager).appendingPathComponent(*relativePath);
    return m_fileManager.fileExists(url.path()) ? std::optional(url) : std::nullopt;
}

QString SettingsStore::nowISO8601() const {
    return iso8601Text(m_clock.now());
}

template <typename Enum>
Enum SettingsStore::storedCase(const QString &key) const {
    const std::optional<QString> stored = m_defaults.string(key);
    return stored ? rawValueOrDefault<Enum>(*stored) : RawValues<Enum>::fallback;
}

void SettingsStore::storeOptional(const QString &key, const std::optional<QString> &value) {
    if (value)
        m_defaults.set(key, *value);
    else
        m_defaults.removeObject(key);
}

// Checks repair a value by assigning it once more; the repaired one is then stored by the second run.

void SettingsStore::checkProcessingTransitionSoundVolume() {
    const double clamped = clampedTransitionVolume(m_processingTransitionSoundVolume);
    if (clamped != m_processingTransitionSoundVolume)
        return setProcessingTransitionSoundVolume(clamped);
    storeProcessingTransitionSoundVolume();
}

void SettingsStore::checkProcessingTransitionPreviewVolume() {
    const double clamped = clampedTransitionVolume(m_processingTransitionPreviewVolume);
    if (clamped != m_processingTransitionPreviewVolume)
        return setProcessingTransitionPreviewVolume(clamped);
    storeProcessingTransitionPreviewVolume();
}

void SettingsStore::checkProfileDisplayName() {
    const QString sanitized = sanitizedProfileDisplayName(m_profileDisplayName);
    if (sanitized != m_profileDisplayName)
        return setProfileDisplayName(sanitized);
    storeProfileDisplayName();
    profileFieldWasStored();
}

void SettingsStore::checkProfileAvatarID() {
    const QString normalized = normalizedProfileAvatarID(m_profileAvatarID);
    if (normalized != m_profileAvatarID)
        return setProfileAvatarID(normalized);
    storeProfileAvatarID();
    profileFieldWasStored();
}

void SettingsStore::checkProfileID() {
    const QString trimmed = Text::trimmed(m_profileID);
    if (trimmed.isEmpty())
        return setProfileID(uuidString(QUuid::createUuid()));
    if (trimmed != m_profileID)
        return setProfileID(trimmed);
    storeProfileID();
}

void SettingsStore::checkProfileUpdatedAt() {
    if (m_profileUpdatedAt.isEmpty())
        return setProfileUpdatedAt(nowISO8601());
    storeProfileUpdatedAt();
}

void SettingsStore::checkProfileSyncVersion() {
    if (m_profileSyncVersion < 1)
        return setProfileSyncVersion(1);
    storeProfileSyncVersion();
}

void SettingsStore::checkProfileAvatarImageRelativePath() {
    storeProfileAvatarImageRelativePath();
    profileFieldWasStored();
}

void SettingsStore::checkProfileAvatarThumbnailRelativePath() {
    storeProfileAvatarThumbnailRelativePath();
    profileFieldWasStored();
}

void SettingsStore::checkOnboardingVersion() {
    if (m_onboardingVersion < 1)
        return setOnboardingVersion(1);
    storeOnboardingVersion();
}

void SettingsStore::storeWhisperBinaryPath() {
    m_defaults.set(Keys::whisperBinaryPath, m_whisperBinaryPath);
}

void SettingsStore::storeModelPath() {
    m_defaults.set(Keys::modelPath, m_modelPath);
}

void SettingsStore::storeLanguage() {
    m_defaults.set(Keys::language, m_language);
}

void SettingsStore::storePerformanceMode() {
    m_defaults.set(Keys::performanceMode, rawValue(m_performanceMode));
}

void SettingsStore::storeTranscriptionEngine() {
    m_defaults.set(Keys::transcriptionEngine, rawValue(m_transcriptionEngine));
}

void SettingsStore::storeProcessingTransitionSound() {
    m_defaults.set(Keys::processingTransitionSound, rawValue(m_processingTransitionSound));
}

void SettingsStore::storeProcessingTransitionSoundVolume() {
    m_defaults.set(Keys::processingTransitionSoundVolume, m_processingTransitionSoundVolume);
}

void SettingsStore::storeProcessingTransitionPreviewVolume() {
    m_defaults.set(Keys::processingTransitionPreviewVolume, m_processingTransitionPreviewVolume);
}

void SettingsStore::storeUiLanguage() {
    m_defaults.set(Keys::uiLanguage, rawValue(m_uiLanguage));
}

void SettingsStore::storeAppearance() {
    m_defaults.set(Keys::appearance, rawValue(m_appearance));
}

void SettingsStore::storeProfileDisplayName() {
    m_defaults.set(Keys::profileDisplayName, m_profileDisplayName);
}

void SettingsStore::storeProfileAvatarID() {
    m_defaults.set(Keys::profileAvatarID, m_profileAvatarID);
}

void SettingsStore::storeProfileID() {
    m_defaults.set(Keys::profileID, m_profileID);
}

void SettingsStore::storeProfileUpdatedAt() {
    m_defaults.set(Keys::profileUpdatedAt, m_profileUpdatedAt);
}

void SettingsStore::storeProfileSyncVersion() {
    m_defaults.set(Keys::profileSyncVersion, m_profileSyncVersion);
}

void SettingsStore::storeProfileAvatarImageRelativePath() {
    storeOptional(Keys::profileAvatarImageRelativePath, m_profileAvatarImageRelativePath);
}

void SettingsStore::storeProfileAvatarThumbnailRelativePath() {
    storeOptional(Keys::profileAvatarThumbnailRelativePath, m_profileAvatarThumbnailRelativePath);
}

void SettingsStore::storeHasCompletedOnboarding() {
    m_defaults.set(Keys::hasCompletedOnboarding, m_hasCompletedOnboarding);
}

void SettingsStore::storeOnboardingSkippedAt() {
    storeOptional(Keys::onboardingSkippedAt, m_onboardingSkippedAt);
}

void SettingsStore::storeOnboardingVersion() {
    m_defaults.set(Keys::onboardingVersion, m_onboardingVersion);
}

void SettingsStore::storeOnboardingLastStep() {
    m_defaults.set(Keys::onboardingLastStep, rawValue(m_onboardingLastStep));
}

void SettingsStore::storeRefinementEnabled() {
    m_defaults.set(Keys::refinementEnabled, m_refinementEnabled);
}

void SettingsStore::storeOllamaModel() {
    m_defaults.set(Keys::ollamaModel, m_ollamaModel);
}

void SettingsStore::storeOllamaEndpoint() {
    m_defaults.set(Keys::ollamaEndpoint, m_ollamaEndpoint);
}

void SettingsStore::storeOllamaTimeout() {
    m_defaults.set(Keys::ollamaTimeout, m_ollamaTimeout);
}

void SettingsStore::storeOllamaSystemPrompt() {
    m_defaults.set(Keys::ollamaSystemPrompt, m_ollamaSystemPrompt);
}
