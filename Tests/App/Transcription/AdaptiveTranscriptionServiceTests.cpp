#include "TolmiApp/Transcription/AdaptiveTranscriptionService.h"

#include "Support/AwaitTask.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeProcessLauncher.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <thread>
#include <variant>

namespace {
using EngineError = TranscriptionEngineError;

/// The result of a pass: a text or an error.
using PassReply = std::variant<QString, EngineError, SystemError>;

struct PassCall {
    WhisperCLIConfiguration configuration;
    TranscriptionRequest request;
};

Task<TranscriptionResult> answer(PassReply reply, TranscriptionRequest request) {
    if (const auto *error = std::get_if<EngineError>(&reply))
        throw *error;
    if (const auto *error = std::get_if<SystemError>(&reply))
        throw *error;
    co_return TranscriptionResult { request.id, std::get<QString>(reply), request.audioFileURL, {} };
}

FileURL recording() {
    return FileURL(QStringLiteral("/cache/recording.wav"));
}

PassReply emptyTranscript(const char *path = "/cache/recording.wav") {
    return EngineError(EngineError::EmptyTranscript { FileURL(QString::fromUtf8(path)) });
}

PassReply timedOut() {
    return EngineError(EngineError::ProcessTimedOut { 3.0 });
}

class AdaptiveTranscriptionServiceTest : public testing::Test {
protected:
    AdaptiveTranscriptionServiceTest() {
        m_request.audioFileURL = recording();
        m_request.binaryURL = FileURL(QStringLiteral("/bin/whisper-cli"));
        m_request.modelURL = FileURL(QStringLiteral("/model.bin"));
        m_request.language = QStringLiteral("en");
        m_request.outputDirectoryURL = FileURL(QStringLiteral("/tmp/tolmi-transcripts"));
        m_request.performanceMode = DictationPerformanceMode::MaxQuality;
        m_request.peakLevel = 0.2;
    }

    AdaptiveTranscriptionService service(double threshold, double timeout) {
        return AdaptiveTranscriptionService({
            .fileManager = m_files,
            .transcribeOperation =
                [this](
                    WhisperCLIConfiguration configuration, TranscriptionRequest request, FileManager &files) {
                    EXPECT_EQ(&files, &m_files);
                    m_events.append(QStringLiteral("pass"));
                    m_calls.push_back({ configuration, request });
                    if (m_replies.empty())
                        throw std::logic_error("a pass without a reply");
                    const PassReply reply = m_replies.front();
                    m_replies.pop_front();
                    return answer(reply, request);
                },
            .scoreOperation =
                [this](const QString &text, double peakLevel) {
                    m_scored.push_back({ text, peakLevel });
                    return m_score;
                },
            .fallbackThreshold = threshold,
            .fallbackTimeoutSeconds = timeout,
        });
    }

    AdaptiveTranscriptionOutcome transcribe(std::deque<PassReply> replies) {
        m_replies = std::move(replies);
        m_calls.clear();
        m_events.clear();
        m_scored.clear();
        AdaptiveTranscriptionService sut = service(AdaptiveTranscriptionService::defaultFallbackThreshold,
            AdaptiveTranscriptionService::defaultFallbackTimeoutSeconds);
        return awaitTask(sut.transcribe(m_request, m_onFallbackStart),
            [] { throw std::logic_error("it waits for nothing"); });
    }

    QString failure(std::deque<PassReply> replies) {
        try {
            transcribe(std::move(replies));
        } catch (const std::exception &error) {
            return localizedDescription(error);
        }
        return QStringLiteral("no error");
    }

    FakeFileManager m_files;
    AdaptiveTranscriptionRequest m_request;
    double m_score = 0.1;
    std::deque<PassReply> m_replies;
    std::vector<PassCall> m_calls;
    std::vector<std::pair<QString, double>> m_scored;
    QStringList m_events;
    std::function<void()> m_onFallbackStart = [this] { m_events.append(QStringLiteral("fallback")); };
};

const QString first = QStringLiteral("first");
const QString second = QStringLiteral("second");
const QString hallucination = QStringLiteral("Thank you.");
const QStringList onePass { QStringLiteral("pass") };
const QStringList twoPasses { QStringLiteral("pass"), QStringLiteral("fallback"), QStringLiteral("pass") };

/// One row of the table of results: the results of the passes, the score, and the outcome.
struct Row {
    const char *name;
    std::deque<PassReply> replies;
    double score;
    double peakLevel;
    DictationPerformanceMode mode;
    QStringList events;
    QString text;
    QualityPass qualityPass;
    /// The error message; if set, text and pass are ignored.
    QString failure;
};

void PrintTo(const Row &row, std::ostream *stream) {
    *stream << row.name;
}

class AdaptiveTable : public AdaptiveTranscriptionServiceTest, public testing::WithParamInterface<Row> { };

TEST_P(AdaptiveTable, HasTheExpectedResult) {
    const Row &row = GetParam();
    m_score = row.score;
    m_request.peakLevel = row.peakLevel;
    m_request.performanceMode = row.mode;
    if (row.failure.isEmpty()) {
        const AdaptiveTranscriptionOutcome outcome = transcribe(row.replies);
        EXPECT_EQ(outcome.text, row.text);
        EXPECT_EQ(outcome.qualityPass, row.qualityPass);
        EXPECT_EQ(outcome.usedFallback, row.events.contains(QStringLiteral("fallback")));
        EXPECT_EQ(outcome.firstPassScore, row.score);
    } else {
        EXPECT_EQ(failure(row.replies), row.failure);
    }
    EXPECT_EQ(m_events, row.events);
    EXPECT_TRUE(m_replies.empty());
}

constexpr auto maxQuality = DictationPerformanceMode::MaxQuality;
constexpr auto faster = DictationPerformanceMode::Faster;
constexpr auto single = QualityPass::Single;
constexpr auto fallback = QualityPass::Fallback;
const QString timedOutText = QStringLiteral("whisper-cli timed out after 3.0s.");
const QString emptyText = QStringLiteral("whisper-cli produced an empty transcript for recording.wav.");

INSTANTIATE_TEST_SUITE_P(Rows, AdaptiveTable,
    testing::Values(Row { "GoodFirst", { first }, 0.9, 0.2, maxQuality, onePass, first, single, {} },
        Row { "FirstAtTheThreshold", { first }, 0.58, 0.2, maxQuality, onePass, first, single, {} },
        Row { "FirstJustBelowTheThreshold", { first, second }, std::nextafter(0.58, 0), 0.2, maxQuality,
            twoPasses, second, fallback, {} },
        Row { "PoorFirstThenText", { first, second }, 0.1, 0.2, maxQuality, twoPasses, second, fallback, {} },
        Row { "PoorFirstThenWorseText", { QStringLiteral("a long and fine text"), QStringLiteral("?") }, 0.5,
            0.2, maxQuality, twoPasses, QStringLiteral("?"), fallback, {} },
        Row { "PoorFirstThenBlank", { first, QStringLiteral(" \n") }, 0.1, 0.2, maxQuality, twoPasses, first,
            single, {} },
        Row { "PoorFirstThenHallucination", { first, hallucination }, 0.1, 0.05, maxQuality, twoPasses, first,
            single, {} },
        Row {
            "PoorFirstThenError", { first, timedOut() }, 0.1, 0.2, maxQuality, twoPasses, first, single, {} },
        Row { "PoorFirstThenSystemError", { first, SystemError(QStringLiteral("gone")) }, 0.1, 0.2,
            maxQuality, twoPasses, first, single, {} },
        Row { "HallucinationThenText", { hallucination, second }, 0.0, 0.05, maxQuality, twoPasses, second,
            fallback, {} },
        Row { "HallucinationWithAGoodScoreThenText", { hallucination, second }, 0.9, 0.05, maxQuality,
            twoPasses, second, fallback, {} },
        Row { "HallucinationThenHallucination", { hallucination, hallucination }, 0.0, 0.05, maxQuality,
            twoPasses, {}, single, emptyText },
        Row { "HallucinationThenError", { hallucination, timedOut() }, 0.0, 0.05, maxQuality, twoPasses, {},
            single, timedOutText },
        Row { "HallucinationThenEmptyTranscript", { hallucination, emptyTranscript("/b/second.wav") }, 0.0,
            0.05, maxQuality, twoPasses, {}, single,
            QStringLiteral("whisper-cli produced an empty transcript for second.wav.") },
        Row { "EmptyThenText", { emptyTranscript(), second }, 0.0, 0.2, maxQuality, twoPasses, second,
            fallback, {} },
        Row { "EmptyThenHallucination", { emptyTranscript("/a/first.wav"), hallucination }, 0.0, 0.05,
            maxQuality, twoPasses, {}, single,
            QStringLiteral("whisper-cli produced an empty transcript for first.wav.") },
        Row { "EmptyThenError", { emptyTranscript(), timedOut() }, 0.0, 0.2, maxQuality, twoPasses, {},
            single, timedOutText },
        Row { "OtherEngineError", { EngineError(EngineError::MissingModel { recording() }) }, 0.0, 0.2,
            maxQuality, onePass, {}, single,
            QStringLiteral("Whisper model file not found at /cache/recording.wav.") },
        Row { "SystemErrorAtFirst", { SystemError(QStringLiteral("gone")) }, 0.0, 0.2, maxQuality, onePass,
            {}, single, QStringLiteral("gone") },
        Row { "FasterKeepsAPoorText", { first }, 0.1, 0.2, faster, onePass, first, single, {} },
        Row { "FasterGivesAnEmptyOutcome", { hallucination }, 0.0, 0.05, faster, onePass, {}, single, {} },
        Row {
            "FasterFailsWithEmpty", { emptyTranscript() }, 0.0, 0.2, faster, onePass, {}, single, emptyText },
        Row {
            "FasterFailsWithAnyError", { timedOut() }, 0.0, 0.2, faster, onePass, {}, single, timedOutText }),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(AdaptiveTranscriptionServiceTest, ThePassesDifferOnlyInEffortAndTimeLimit) {
    transcribe({ first, second });
    ASSERT_EQ(m_calls.size(), 2U);
    for (const PassCall &call : m_calls) {
        EXPECT_EQ(call.configuration.binaryURL, m_request.binaryURL);
        EXPECT_EQ(call.configuration.modelURL, m_request.modelURL);
        EXPECT_EQ(call.configuration.language, m_request.language);
        EXPECT_EQ(call.configuration.outputDirectoryURL, m_request.outputDirectoryURL);
        EXPECT_EQ(call.request.audioFileURL, m_request.audioFileURL);
    }
    EXPECT_EQ(m_calls[0].configuration.extraArguments.join(u' '), QStringLiteral("-bo 2 -bs 2 -tp 0"));
    EXPECT_EQ(m_calls[1].configuration.extraArguments.join(u' '), QStringLiteral("-bo 8 -bs 8 -tp 0"));
    EXPECT_EQ(m_calls[0].configuration.executionTimeoutSeconds, std::nullopt);
    EXPECT_EQ(m_calls[1].configuration.executionTimeoutSeconds, 3.0);
    EXPECT_NE(m_calls[0].request.id, m_calls[1].request.id);
}

TEST_F(AdaptiveTranscriptionServiceTest, TheSanitisedFirstTextIsScoredOnce) {
    m_request.peakLevel = 0.05;
    transcribe({ hallucination, second });
    EXPECT_EQ(m_scored, (std::vector { std::pair(QString(), 0.05) }));
    transcribe({ QStringLiteral("  first\n"), second });
    EXPECT_EQ(m_scored, (std::vector { std::pair(first, 0.05) }));
    transcribe({ emptyTranscript(), second });
    EXPECT_EQ(m_scored, (std::vector { std::pair(QString(), 0.05) }));
}

TEST_F(AdaptiveTranscriptionServiceTest, TextsAreTrimmed) {
    EXPECT_EQ(transcribe({ first, QStringLiteral("\n second ") }).text, second);
}

TEST_F(AdaptiveTranscriptionServiceTest, ASecondPassNeedsNoListener) {
    m_onFallbackStart = nullptr;
    EXPECT_EQ(transcribe({ first, second }).text, second);
    EXPECT_EQ(m_calls.size(), 2U);
}

TEST_F(AdaptiveTranscriptionServiceTest, ThresholdAndLimitCanBeSet) {
    m_replies = { first, second };
    m_score = 0.8;
    AdaptiveTranscriptionService sut = service(0.9, 7.5);
    const auto outcome = awaitTask(sut.transcribe(m_request, {}), [] {});
    EXPECT_EQ(outcome.text, second);
    EXPECT_EQ(m_calls[1].configuration.executionTimeoutSeconds, 7.5);
}

TEST_F(AdaptiveTranscriptionServiceTest, ScoresTextAndLevelByDefault) {
    const auto score = AdaptiveTranscriptionService::defaultScoreOperation();
    EXPECT_NEAR(score(hallucination, 0.05), 0.351726, 5e-7);
}

/// The service with the real engine and scripted processes.
class AdaptiveTranscriptionByEngine : public AdaptiveTranscriptionServiceTest {
protected:
    AdaptiveTranscriptionByEngine() {
        m_files.addExecutable(m_request.binaryURL.path());
        m_files.files[m_request.modelURL.path()];
        m_files.files[m_request.audioFileURL.path()];
    }

    FakeProcessLauncher::Reply transcript(const QByteArray &text) {
        return { .work = [this, text](const QStringList &arguments) {
            m_files.files[arguments.last() + QStringLiteral(".txt")] = text;
        } };
    }

    AdaptiveTranscriptionOutcome transcribeByEngine() {
        AdaptiveTranscriptionService sut({ .fileManager = m_files,
            .transcribeOperation
            = AdaptiveTranscriptionService::defaultTranscribeOperation(m_launcher, m_clock) });
        return awaitTask(sut.transcribe(m_request, m_onFallbackStart), [this] {
            m_clock.runPosted();
            std::this_thread::yield();
        });
    }

    VirtualClock m_clock;
    FakeProcessLauncher m_launcher { m_clock };
};

TEST_F(AdaptiveTranscriptionByEngine, RunsAnEngineForEachPass) {
    m_launcher.replies.push_back(transcript(" one\n"));
    m_launcher.replies.push_back(transcript(" two\n"));
    const AdaptiveTranscriptionOutcome outcome = transcribeByEngine();
    EXPECT_EQ(outcome.text, QStringLiteral("two"));
    EXPECT_TRUE(outcome.usedFallback);
    EXPECT_EQ(m_launcher.launches.size(), 2U);
    EXPECT_EQ(m_events, QStringList { QStringLiteral("fallback") });
}

TEST_F(AdaptiveTranscriptionByEngine, AHallucinationWithoutASecondTextEndsWithATimeOut) {
    m_request.peakLevel = 0.05;
    m_launcher.replies.push_back(transcript("Thank you."));
    m_launcher.replies.push_back({ .seconds = std::nullopt });
    try {
        transcribeByEngine();
        FAIL() << "no error";
    } catch (const EngineError &error) {
        EXPECT_EQ(error, EngineError(EngineError::ProcessTimedOut { 3.0 }));
    }
}

TEST_F(AdaptiveTranscriptionByEngine, ACallMayOutliveTheService) {
    m_launcher.replies.push_back(transcript("one"));
    m_launcher.replies.push_back(transcript("two"));
    TaskOutcome<AdaptiveTranscriptionOutcome> outcome;
    {
        AdaptiveTranscriptionService sut({ .fileManager = m_files,
            .transcribeOperation
            = AdaptiveTranscriptionService::defaultTranscribeOperation(m_launcher, m_clock) });
        launch(follow(sut.transcribe(m_request, {}), outcome));
    }
    while (!outcome.hasEnded())
        m_clock.runPosted();
    ASSERT_TRUE(outcome.value);
    EXPECT_EQ(outcome.value->text, QStringLiteral("two"));
}
} // namespace
