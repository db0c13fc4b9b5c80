#pragma once

#include "Foundation/Clock.h"
#include "Platform/FileManager.h"
#include "Platform/Process.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"
#include "TolmiCore/TranscriptionEngine.h"
#include "TolmiCore/WhisperCLICommand.h"

/// Transcribes a recording with light settings and, if the best quality is wanted and the result looks poor,
/// a second time with heavy ones and a time limit. A non-empty second text always wins.
///
/// Main thread only. Stateless; a call may outlive it.
class AdaptiveTranscriptionService final : public TranscriptionService {
public:
    /// Runs one pass.
    using TranscribeOperation = std::function<Task<TranscriptionResult>(
        WhisperCLIConfiguration, TranscriptionRequest, FileManager &)>;
    /// Scores a text and the peak level of its recording.
    using ScoreOperation = std::function<double(const QString &, double)>;

    /// A first score strictly below it triggers a second pass.
    static constexpr double defaultFallbackThreshold = 0.58;
    /// Time limit of the second pass.
    static constexpr double defaultFallbackTimeoutSeconds = 3.0;

    struct Options {
        FileManager &fileManager;
        TranscribeOperation transcribeOperation;
        ScoreOperation scoreOperation = defaultScoreOperation();
        double fallbackThreshold = defaultFallbackThreshold;
        double fallbackTimeoutSeconds = defaultFallbackTimeoutSeconds;
    };

    explicit AdaptiveTranscriptionService(Options options);

    /// Runs whisper-cli with a new engine for each pass. Launcher and clock must live until the program
    /// exits.
    static TranscribeOperation defaultTranscribeOperation(ProcessLauncher &launcher, Clock &clock);

    /// Scores with TranscriptionQualityScorer.
    static ScoreOperation defaultScoreOperation();

    Task<AdaptiveTranscriptionOutcome> transcribe(
        AdaptiveTranscriptionRequest request, std::function<void()> onFallbackStart) override;

private:
    Options m_options;
};
