// From the key-up to the pasted text.

#include "Foundation/Clock.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Dictation/DictationStages.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Transcription/TranscriptionSanitizer.h"

namespace {
/// The refiner's text; absent when there is no refiner or when it fails.
Task<std::optional<QString>> tryRefine(std::shared_ptr<TextRefiner> refiner, QString text) {
    if (!refiner)
        co_return std::nullopt;
    try {
        QString refined = co_await refiner->refine(text);
        co_return refined;
    } catch (const std::exception &) {
        co_return std::nullopt;
    }
}
} // namespace

Task<> DictationFlowManager::stopAndProcess() {
    if (state() != DictationState::Kind::Recording || !m_currentRecordingURL)
        co_return;
    const auto self = shared_from_this();
    const FileURL audioFileURL = *m_currentRecordingURL;
    const int discardCount = m_discardCount;
    stopActiveCapture();
    updateState(DictationState::Kind::Transcribing);
    const Date started = m_platform.clock.now();
    const std::optional<AdaptiveTranscriptionOutcome> outcome = co_await transcribe(audioFileURL);
    if (outcome) {
        const QString finalText = co_await refineIfEnabled(outcome->text);
        publishLastTranscript(finalText);
        const double durationSeconds = m_platform.clock.now() - started;
        if (!finalText.isEmpty())
            pasteAndStore(*outcome, finalText, durationSeconds, audioFileURL);
        co_await showDone();
    }
    // A recording that began while the done state was shown loses its file and its level here: its key-up
    // then finds nothing to process. That is how the flow is meant to behave. A discarded recording has
    // cleared them itself, and what stands there now belongs to one that began after it.
    if (m_discardCount == discardCount) {
        m_currentRecordingURL = std::nullopt;
        m_peakRecordingLevel = 0;
        m_activeCaptureBackend = std::nullopt;
    }
    runAudioRetentionSweep();
}

void DictationFlowManager::stopActiveCapture() {
    if (!m_activeCaptureBackend)
        return;
    if (m_activeCaptureBackend == ActiveCaptureBackend::LivePreRoll)
        m_collaborators.liveCapture->stopRecording();
    else
        m_collaborators.recorder->stopRecording();
}

AdaptiveTranscriptionRequest DictationFlowManager::transcriptionRequest(const FileURL &audioFileURL) const {
    return { .audioFileURL = audioFileURL,
        .binaryURL = FileURL(m_settings->whisperBinaryPath()),
        .modelURL = FileURL(m_settings->modelPath()),
        .language = m_settings->language(),
        .outputDirectoryURL = m_platform.fileManager.temporaryDirectory().appendingPathComponent(
            QStringLiteral("tolmi-transcripts")),
        .transcriptionEngine = m_settings->transcriptionEngine(),
        .performanceMode = m_settings->performanceMode(),
        .peakLevel = m_peakRecordingLevel };
}

/// Publishes what the first pass was like; absent when the flow has failed instead.
Task<std::optional<AdaptiveTranscriptionOutcome>> DictationFlowManager::transcribe(FileURL audioFileURL) {
    const AdaptiveTranscriptionRequest request = transcriptionRequest(audioFileURL);
    const std::function<void()> onFallbackStart = [weakManager = weak_from_this()] {
        if (const auto manager = weakManager.lock())
            manager->updateState(DictationState::Kind::OptimizingQuality);
    };
    const Date started = m_platform.clock.now();
    std::optional<AdaptiveTranscriptionOutcome> outcome;
    try {
        outcome = co_await m_collaborators.adaptiveTranscriptionService->transcribe(request, onFallbackStart);
    } catch (const std::exception &error) {
        fail(localizedDescription(error));
        co_return std::nullopt;
    }
    logTranscriptionTime(m_platform.clock.now() - started);
    publishFirstPassScore(outcome->firstPassScore);
    publishUsedFallback(outcome->usedFallback);
    co_return outcome;
}

/// The text that is pasted. Refinement never fails a dictation: at worst the text stays as it is.
Task<QString> DictationFlowManager::refineIfEnabled(QString text) {
    if (!m_settings->refinementEnabled() || text.isEmpty())
        co_return text;
    updateState(DictationState::Kind::Refining);
    std::optional<QString> refined = co_await tryRefine(m_refiner, text);
    if (!refined)
        refined = co_await tryRefine(m_collaborators.fallbackRefiner, text);
    co_return TranscriptionSanitizer::sanitize(refined.value_or(text), m_peakRecordingLevel);
}

void DictationFlowManager::pasteAndStore(const AdaptiveTranscriptionOutcome &outcome,
    const QString &finalText, double durationSeconds, const FileURL &audioFileURL) {
    updateState(DictationState::Kind::Pasting);
    const PasteTargetCapture capture
        = m_collaborators.pasteService->paste(finalText, m_settings->uiLanguage());
    m_collaborators.history->add({ .rawText = outcome.text,
        .refinedText = finalText,
        .language = m_settings->language(),
        .durationSeconds = durationSeconds,
        .pasteTargetAppName = capture.appName,
        .pasteTargetBundleID = capture.bundleID,
        .pasteTimestamp = capture.timestamp,
        .audioFileRelativePath = m_audioCacheStore.relativePath(audioFileURL),
        .qualityPass = outcome.qualityPass });
}

/// Leaves the done state after two seconds, unless a new recording has left it.
Task<> DictationFlowManager::showDone() {
    constexpr double doneSeconds = 2.0;
    updateState(DictationState::Kind::Done);
    co_await sleep(m_platform.clock, doneSeconds);
    if (state() == DictationState::Kind::Done)
        updateState(DictationState::Kind::Idle);
}
