#include "TolmiApp/Transcription/AdaptiveTranscriptionService.h"

#include "TolmiApp/Transcription/TranscriptionQualityScorer.h"
#include "TolmiApp/Transcription/TranscriptionSanitizer.h"
#include "TolmiCore/WhisperCLIEngine.h"

using EngineError = TranscriptionEngineError;

namespace {
using Options = AdaptiveTranscriptionService::Options;

/// The result of one pass: a sanitised text or an error.
struct Pass {
    QString text;
    std::exception_ptr error;
};

WhisperCLIConfiguration configuration(const AdaptiveTranscriptionRequest &request, const QString &effort) {
    WhisperCLIConfiguration configuration;
    configuration.binaryURL = request.binaryURL;
    configuration.modelURL = request.modelURL;
    configuration.language = request.language;
    configuration.outputDirectoryURL = request.outputDirectoryURL;
    // Best-of, beam size, and temperature zero.
    configuration.extraArguments = { QStringLiteral("-bo"), effort, QStringLiteral("-bs"), effort,
        QStringLiteral("-tp"), QStringLiteral("0") };
    return configuration;
}

WhisperCLIConfiguration firstPassConfiguration(const AdaptiveTranscriptionRequest &request) {
    return configuration(request, QStringLiteral("2"));
}

WhisperCLIConfiguration fallbackConfiguration(
    const AdaptiveTranscriptionRequest &request, double timeoutSeconds) {
    WhisperCLIConfiguration heavy = configuration(request, QStringLiteral("8"));
    heavy.executionTimeoutSeconds = timeoutSeconds;
    return heavy;
}

Task<Pass> runPass(
    Options options, WhisperCLIConfiguration configuration, AdaptiveTranscriptionRequest request) {
    const TranscriptionRequest run { QUuid::createUuid(), request.audioFileURL };
    try {
        const TranscriptionResult result
            = co_await options.transcribeOperation(configuration, run, options.fileManager);
        co_return { TranscriptionSanitizer::sanitize(result.text, request.peakLevel), nullptr };
    } catch (...) {
        co_return { QString(), std::current_exception() };
    }
}

bool isEmptyTranscript(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const EngineError &engineError) {
        return std::holds_alternative<EngineError::EmptyTranscript>(engineError.errorCase());
    } catch (...) {
        return false;
    }
}

/// The outcome of both passes; throws if neither produced a text.
AdaptiveTranscriptionOutcome outcome(
    const Pass &first, double firstPassScore, const Pass &second, const FileURL &audioFileURL) {
    if (!second.text.isEmpty())
        return { second.text, firstPassScore, true, QualityPass::Fallback };
    if (!first.text.isEmpty())
        return { first.text, firstPassScore, true, QualityPass::Single };
    if (second.error)
        std::rethrow_exception(second.error);
    if (first.error)
        std::rethrow_exception(first.error);
    throw EngineError(EngineError::EmptyTranscript { audioFileURL });
}

Task<TranscriptionResult> transcribeByWhisperCLI(WhisperCLIConfiguration configuration,
    TranscriptionRequest request, FileManager &fileManager, ProcessLauncher &launcher, Clock &clock) {
    WhisperCLIEngine engine(configuration, fileManager, launcher, clock);
    co_return co_await engine.transcribe(request);
}
} // namespace

AdaptiveTranscriptionService::AdaptiveTranscriptionService(Options options)
    : m_options(std::move(options)) { }

AdaptiveTranscriptionService::TranscribeOperation AdaptiveTranscriptionService::defaultTranscribeOperation(
    ProcessLauncher &launcher, Clock &clock) {
    return [&launcher, &clock](WhisperCLIConfiguration configuration, TranscriptionRequest request,
               FileManager &fileManager) {
        return transcribeByWhisperCLI(configuration, request, fileManager, launcher, clock);
    };
}

AdaptiveTranscriptionService::ScoreOperation AdaptiveTranscriptionService::defaultScoreOperation() {
    return [](const QString &text, double peakLevel) {
        return TranscriptionQualityScorer().score(text, peakLevel);
    };
}

Task<AdaptiveTranscriptionOutcome> AdaptiveTranscriptionService::transcribe(
    AdaptiveTranscriptionRequest request, std::function<void()> onFallbackStart) {
    const Options options = m_options;
    const Pass first = co_await runPass(options, firstPassConfiguration(request), request);
    // Of the errors, only an empty transcript may be fixed by a second pass; the others would recur.
    if (first.error && !isEmptyTranscript(first.error))
        std::rethrow_exception(first.error);
    const double score = options.scoreOperation(first.text, request.peakLevel);
    const bool isPoor = first.text.isEmpty() || score < options.fallbackThreshold;
    if (request.performanceMode != DictationPerformanceMode::MaxQuality || !isPoor) {
        if (first.text.isEmpty() && first.error)
            std::rethrow_exception(first.error);
        co_return { first.text, score, false, QualityPass::Single };
    }
    if (onFallbackStart)
        onFallbackStart();
    const Pass second
        = co_await runPass(options, fallbackConfiguration(request, options.fallbackTimeoutSeconds), request);
    co_return outcome(first, score, second, request.audioFileURL);
}
