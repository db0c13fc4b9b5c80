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
    const bool isFree = state() == DictationState::Kind::Idle || state() == DictationState::Kind::Done;
    if (!isFree || m_startsUnderWay > 0)
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
    ++m_startsUnderWay;
    const std::optional<FileURL> url = co_await openRecording(recording);
    endStart();
    if (!url)
        co_return;
    if (recording->isDiscarded) {
        stopActiveCapture();
        m_activeCaptureBackend = std::nullopt;
        removeRecording(*url);
        co_return;
    }
    m_currentRecordingURL = url;
    recording->url = url;
    recording->backend = m_activeCaptureBackend;
    m_peakRecordingLevel = 0;
    publishCurrentPreRollPeak(m_collaborators.liveCapture->currentPreRollPeak());
    publishFirstPassScore(0);
    publishUsedFallback(false);
    updateState(DictationState::Kind::Recording);
    m_collaborators.pasteService->prepare();
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

/// What came while the start waited for the microphone comes true in a later turn, after the recording.
void DictationFlowManager::endStart() {
    if (--m_startsUnderWay > 0 || !std::exchange(m_isStopPending, false))
        return;
    startingTask (&DictationFlowManager::stopAndProcess)();
}

/// The new file with a capture that writes to it; absent when that failed, which the flow tells unless the
/// recording was discarded meanwhile.
Task<std::optional<FileURL>> DictationFlowManager::openRecording(
    std::shared_ptr<const RequestedRecording> recording) {
    QString message;
    try {
        const FileURL url = m_audioCacheStore.makeRecordingURL();
        co_await startRecording(url);
        co_return url;
    } catch (const AudioRecorderError &) {
        message = L10n::text(L10n::Key::stateRecordingStartFailed, m_settings->uiLanguage());
    } catch (const std::exception &error) {
        message = localizedDescription(error);
    }
    if (!recording->isDiscarded)
        fail(message);
    co_return std::nullopt;
}

/// Throws what keeps the second of the two back ends from starting.
Task<> DictationFlowManager::startRecording(FileURL url) {
    const bool isLive = co_await startLiveCapture(url);
    if (!isLive)
        m_collaborators.recorder->startRecording(url);
    m_activeCaptureBackend
        = isLive ? ActiveCaptureBackend::LivePreRoll : ActiveCaptureBackend::LegacyRecorder;
}

/// Whether the live capture records.
Task<bool> DictationFlowManager::startLiveCapture(FileURL url) {
    try {
        co_await m_collaborators.liveCapture->prepareToRecord();
        m_collaborators.liveCapture->startRecording(url);
        co_return true;
    } catch (const std::exception &error) {
        logLine(
            QStringLiteral("Tolmi: Live pre-roll capture failed, falling back to AVAudioRecorder. Error: ")
            + localizedDescription(error));
    }
    co_return false;
}

/// The microphone has gone and does not come back. Half a sentence must not be pasted as a whole one; its
/// file stays among the kept recordings.
void DictationFlowManager::loseSound() {
    if (state() != DictationState::Kind::Recording
        || m_activeCaptureBackend != ActiveCaptureBackend::LivePreRoll)
        return;
    stopActiveCapture();
    m_currentRecordingURL = std::nullopt;
    m_activeCaptureBackend = std::nullopt;
    fail(L10n::text(L10n::Phrase::recordingSoundLost, m_settings->uiLanguage()));
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
