// The start of a recording, and the metering while it runs.

#include "Foundation/Clock.h"
#include "Foundation/Log.h"
#include "TolmiApp/Audio/AudioMeterMath.h"
#include "TolmiApp/Audio/AudioRecorderError.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Texts/L10n.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace {
/// Two digits behind a point, whatever the locale.
QString twoDecimals(double seconds) {
    std::array<char, 32> digits;
    const auto result
        = std::to_chars(digits.data(), digits.data() + digits.size(), seconds, std::chars_format::fixed, 2);
    return QString::fromLatin1(digits.data(), result.ptr - digits.data());
}

void logSlowStart(double seconds) {
    constexpr double budgetSeconds = 0.35;
    if (seconds > budgetSeconds)
        logLine(QStringLiteral("Tolmi: recording start latency ") + twoDecimals(seconds) + u's');
}
} // namespace

Task<> DictationFlowManager::startDictation() {
    m_requestedRecording = nullptr;
    if (state() != DictationState::Kind::Idle && state() != DictationState::Kind::Done)
        co_return;
    const auto self = shared_from_this();
    const auto recording = std::make_shared<RequestedRecording>();
    m_requestedRecording = recording;
    const Date keyDown = m_platform.clock.now();
    const bool mayListen = co_await m_collaborators.recorder->requestPermission();
    if (recording->isDiscarded)
        co_return;
    if (!mayListen) {
        fail(L10n::text(L10n::Key::stateMicDenied, m_settings->uiLanguage()));
        co_return;
    }
    m_collaborators.liveCapture->warmupIfAuthorized();
    const std::optional<FileURL> url = openRecording();
    if (!url)
        co_return;
    m_currentRecordingURL = url;
    recording->url = url;
    recording->backend = m_activeCaptureBackend;
    m_peakRecordingLevel = 0;
    publishCurrentPreRollPeak(m_collaborators.liveCapture->currentPreRollPeak());
    publishFirstPassScore(0);
    publishUsedFallback(false);
    updateState(DictationState::Kind::Recording);
    logSlowStart(m_platform.clock.now() - keyDown);
}

void DictationFlowManager::discardRecording() {
    const auto recording = std::exchange(m_requestedRecording, nullptr);
    if (!recording)
        return;
    recording->isDiscarded = true;
    if (!recording->url || state() != DictationState::Kind::Recording)
        return;
    m_activeCaptureBackend = recording->backend;
    stopActiveCapture();
    m_activeCaptureBackend = std::nullopt;
    m_currentRecordingURL = std::nullopt;
    ++m_discardCount;
    updateState(DictationState::Kind::Idle);
    removeRecording(*recording->url);
}

/// Leaves the file to the sweeper where it cannot be removed.
void DictationFlowManager::removeRecording(const FileURL &url) {
    m_maintenanceQueue.async([remove = m_collaborators.removeRecording, url] {
        try {
            remove(url);
        } catch (const std::exception &error) {
            logLine(QStringLiteral("Tolmi: a discarded recording could not be removed: ")
                + localizedDescription(error));
        }
    });
}

/// The new file with a capture that writes to it; absent when the flow has failed instead.
std::optional<FileURL> DictationFlowManager::openRecording() {
    try {
        const FileURL url = m_audioCacheStore.makeRecordingURL();
        startRecording(url);
        return url;
    } catch (const AudioRecorderError &) {
        fail(L10n::text(L10n::Key::stateRecordingStartFailed, m_settings->uiLanguage()));
    } catch (const std::exception &error) {
        fail(localizedDescription(error));
    }
    return std::nullopt;
}

/// Throws what keeps the second of the two back ends from starting.
void DictationFlowManager::startRecording(const FileURL &url) {
    try {
        m_collaborators.liveCapture->startRecording(url);
        m_activeCaptureBackend = ActiveCaptureBackend::LivePreRoll;
        return;
    } catch (const std::exception &error) {
        logLine(
            QStringLiteral("Tolmi: Live pre-roll capture failed, falling back to AVAudioRecorder. Error: ")
            + localizedDescription(error));
    }
    m_collaborators.recorder->startRecording(url);
    m_activeCaptureBackend = ActiveCaptureBackend::LegacyRecorder;
}

void DictationFlowManager::startMetering() {
    stopMetering(false);
    m_meteringTask = std::make_shared<MeteringTask>();
    m_platform.clock.post([weakManager = weak_from_this(), task = m_meteringTask] {
        if (auto manager = weakManager.lock())
            launch(meter(std::move(manager), task));
    });
}

void DictationFlowManager::stopMetering(bool resetPeak) {
    if (m_meteringTask)
        m_meteringTask->isCancelled = true;
    m_meteringTask = nullptr;
    setAudioLevel(0);
    if (resetPeak) {
        m_peakRecordingLevel = 0;
        publishCurrentPreRollPeak(0);
    }
}

Task<> DictationFlowManager::meter(
    std::shared_ptr<DictationFlowManager> manager, std::shared_ptr<const MeteringTask> task) {
    constexpr double secondsBetween = 0.02;
    while (!task->isCancelled && manager->state() == DictationState::Kind::Recording) {
        manager->sampleLevel();
        co_await sleep(manager->m_platform.clock, secondsBetween);
    }
}

void DictationFlowManager::sampleLevel() {
    const double level = currentLevel();
    m_peakRecordingLevel = std::max(m_peakRecordingLevel, level);
    setAudioLevel(AudioMeterMath::smoothedLevel(audioLevel(), level));
}

/// The raw level of the active capture; the live one tells its peak at the same time.
double DictationFlowManager::currentLevel() {
    if (!m_activeCaptureBackend)
        return 0;
    if (m_activeCaptureBackend == ActiveCaptureBackend::LegacyRecorder)
        return m_collaborators.recorder->currentLevel();
    const double level = m_collaborators.liveCapture->currentLevel();
    publishCurrentPreRollPeak(m_collaborators.liveCapture->currentPreRollPeak());
    return level;
}

void DictationFlowManager::setAudioLevel(double level) {
    const double clamped = AudioMeterMath::clamp(level);
    publishAudioLevel(clamped);
    overlayPanel().updateAudioLevel(clamped);
}
