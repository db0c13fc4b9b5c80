#include "TolmiCore/TextRefiner.h"
#include "TolmiCore/TranscriptionEngine.h"

#include <gtest/gtest.h>

namespace {
using EngineError = TranscriptionEngineError;

struct EngineErrorText {
    EngineError::Case errorCase;
    const char *expected;
};

class EngineErrorTexts : public testing::TestWithParam<EngineErrorText> { };

TEST_P(EngineErrorTexts, AreFixed) {
    const EngineError error(GetParam().errorCase);
    EXPECT_EQ(error.errorDescription(), QString::fromUtf8(GetParam().expected));
    EXPECT_STREQ(error.what(), GetParam().expected);
}

FileURL recording() {
    return FileURL(QStringLiteral("/tmp/a/recording-1.wav"));
}

INSTANTIATE_TEST_SUITE_P(Table, EngineErrorTexts,
    testing::Values(EngineErrorText { EngineError::MissingBinary { recording() },
                        "whisper-cli binary not found or not executable at /tmp/a/recording-1.wav." },
        EngineErrorText { EngineError::MissingModel { recording() },
            "Whisper model file not found at /tmp/a/recording-1.wav." },
        EngineErrorText { EngineError::MissingAudioFile { recording() },
            "Audio recording not found at /tmp/a/recording-1.wav." },
        EngineErrorText { EngineError::CouldNotCreateOutputDirectory { recording() },
            "Could not create transcript output directory at /tmp/a/recording-1.wav." },
        EngineErrorText { EngineError::ProcessFailed { 1, QStringLiteral("bad model") },
            "whisper-cli failed with exit code 1. bad model" },
        EngineErrorText { EngineError::ProcessFailed { -7, {} }, "whisper-cli failed with exit code -7. " },
        EngineErrorText { EngineError::ProcessTimedOut { 3.0 }, "whisper-cli timed out after 3.0s." },
        EngineErrorText { EngineError::ProcessTimedOut { 0.25 }, "whisper-cli timed out after 0.25s." },
        EngineErrorText { EngineError::OutputMissing { recording() },
            "whisper-cli finished but output file is missing at /tmp/a/recording-1.wav." },
        EngineErrorText { EngineError::EmptyTranscript { recording() },
            "whisper-cli produced an empty transcript for recording-1.wav." },
        EngineErrorText { EngineError::MissingModel {}, "Whisper model file not found at ." }));

TEST(TranscriptionEngineError, LeavesWhatWhisperCLIPrintedOut) {
    const auto shortened = [](const QString &text) { return EngineError::withoutOutput(text).toStdString(); };
    const EngineError failed(EngineError::ProcessFailed { -7, QStringLiteral("[00:00] My secret. Words.") });
    EXPECT_EQ(shortened(failed.errorDescription()), "whisper-cli failed with exit code -7.");
    const EngineError silent(EngineError::ProcessFailed { 1, {} });
    EXPECT_EQ(shortened(silent.errorDescription()), "whisper-cli failed with exit code 1.");
    const EngineError missing(EngineError::MissingModel { recording() });
    EXPECT_EQ(shortened(missing.errorDescription()), missing.errorDescription().toStdString());
    EXPECT_EQ(shortened(QString()), "");
}

TEST(TranscriptionEngineError, EqualsByCaseAndPayload) {
    EXPECT_EQ(EngineError(EngineError::MissingModel { recording() }),
        EngineError(EngineError::MissingModel { recording() }));
    EXPECT_FALSE(EngineError(EngineError::MissingModel { recording() })
        == EngineError(EngineError::MissingBinary { recording() }));
    EXPECT_FALSE(
        EngineError(EngineError::MissingModel { recording() }) == EngineError(EngineError::MissingModel {}));
}

TEST(TranscriptionRequest, HasAUniqueId) {
    EXPECT_NE(TranscriptionRequest().id, TranscriptionRequest().id);
}

TEST(TextRefinerError, TextsAreFixed) {
    using Error = TextRefinerError;
    EXPECT_EQ(Error(Error::ServiceUnavailable { QStringLiteral("no") }).errorDescription(),
        QStringLiteral("Text refiner unavailable: no"));
    EXPECT_EQ(Error(Error::RefinementFailed { QStringLiteral("no") }).errorDescription(),
        QStringLiteral("Text refinement failed: no"));
    EXPECT_EQ(Error(Error::Timeout {}).errorDescription(), QStringLiteral("Text refinement timed out."));
}
} // namespace
