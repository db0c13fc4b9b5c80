#include "TolmiApp/Settings/SettingsStore.h"

#include "Foundation/Log.h"
#include "Foundation/Uuid.h"
#include "Text/Text.h"
#include "TolmiApp/Settings/ApplicationFolder.h"
#include "TolmiCore/TolmiDefaultPaths.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
/// ISO 8601 in UTC with exactly three fractional digits, truncated.
QString iso8601Text(Date date) {
    // Split first, because multiplying the whole value could round up to the next millisecond.
    const double wholeSeconds = std::floor(date.secondsSinceReferenceDate);
    const double milliseconds = std::floor((date.secondsSinceReferenceDate - wholeSeconds) * 1000);
    const qint64 sinceEpoch = qint64(Date { wholeSeconds }.secondsSince1970()) * 1000 + qint64(milliseconds);
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch, Qt::UTC).toString(Qt::ISODateWithMs);
}
} // namespace

SettingsStore::SettingsStore(
    UserDefaults &defaults, const FileManager &fileManager, const Clock &clock, const BundleInfo &bundleInfo)
    : m_table(defaults)
    , m_fileManager(fileManager)
    , m_clock(clock)
    , m_bundleInfo(bundleInfo)
    , m_profileChanges(
          [this] {
              return TrackedProfile { m_profileDisplayName, m_profileAvatarID,
                  m_profileAvatarImageRelativePath, m_profileAvatarThumbnailRelativePath };
          },
          [this] { markProfileChanged(); }) {
    m_table.load();
    normalizeBootstrappedState();
    m_table.writeBack();
    m_profileChanges.start();
}

/// Runs after every assignment. If it repairs the value, it assigns that, which runs this again and stores
/// it.
void SettingsStore::wasAssigned(AbstractSetting &setting) {
    if (setting.repair())
        return;
    setting.store();
    if (setting.isOfProfile())
        m_profileChanges.noticeAssignment();
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
    m_profileChanges.performBatchUpdate([&] {
        setProfileAvatarImageRelativePath(imageRelativePath);
        setProfileAvatarThumbnailRelativePath(thumbnailRelativePath);
    });
}

void SettingsStore::clearCustomAvatar(bool trackProfileChange) {
    const auto clear = [this] {
        setProfileAvatarImageRelativePath(std::nullopt);
        setProfileAvatarThumbnailRelativePath(std::nullopt);
    };
    if (trackProfileChange)
        m_profileChanges.performBatchUpdate(clear);
    else
        m_profileChanges.performRepair(clear);
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

QString SettingsStore::loadedWhisperBinaryPath(const std::optional<QString> &stored) const {
    if (stored && m_fileManager.isExecutableFile(*stored))
        return *stored;
    return TolmiDefaultPaths::defaultWhisperBinaryURL({ m_fileManager, m_bundleInfo }).path();
}

// Early releases stored the path of the small English model; it is replaced by the large one if that is in
// the same folder.
QString SettingsStore::loadedModelPath(const std::optional<QString> &stored) {
    const QString standard = TolmiDefaultPaths::defaultModelURL({ m_fileManager, m_bundleInfo }).path();
    if (!stored)
        return standard;
    const FileURL storedURL(*stored);
    const QString large = storedURL.deletingLastPathComponent()
                              .appendingPathComponent(QStringLiteral("ggml-large-v3.bin"))
                              .path();
    if (storedURL.lastPathComponent() == u"ggml-base.en.bin" && m_fileManager.fileExists(large))
        return storedAtOnce(large);
    if (m_fileManager.fileExists(*stored))
        return *stored;
    return m_fileManager.fileExists(standard) ? storedAtOnce(standard) : *stored;
}

QString SettingsStore::storedAtOnce(const QString &modelPath) {
    m_table.defaults().set(m_modelPathSetting.key(), modelPath);
    return modelPath;
}

QString SettingsStore::repairedProfileID(const QString &id) {
    const QString trimmed = Text::trimmed(id);
    return trimmed.isEmpty() ? uuidString(QUuid::createUuid()) : trimmed;
}

qint64 SettingsStore::atLeastOne(qint64 value) {
    return std::max<qint64>(1, value);
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

void SettingsStore::markProfileChanged() {
    if (m_profileSyncVersion == std::numeric_limits<qint64>::max())
        fatalError(QStringLiteral("Tolmi: the version of the profile cannot grow any further"));
    setProfileSyncVersion(m_profileSyncVersion + 1);
    setProfileUpdatedAt(nowISO8601());
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
        m_profileAvatarImageRelativePathSetting.store();
        m_profileAvatarThumbnailRelativePathSetting.store();
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
