#include "TolmiCore/WhisperCLIEngine.h"

#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Files/LinuxProcess.h"
#include "Support/AwaitTask.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeProcessLauncher.h"
#include "Support/Script.h"

#include <QCoreApplication>
#include <QDir>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace {
using EngineError = TranscriptionEngineError;

/// The message of the error that `task` throws.
template <typename Run>
QString errorOf(Run run) {
    try {
        run();
    } catch (const std::exception &error) {
        return localizedDescription(error);
    }
    return QStringLiteral("no error");
}

/// The engine with an in-memory file system, scripted processes and a stopped clock.
class WhisperCLIEngineRules : public testing::Test {
protected:
    WhisperCLIEngineRules() {
        m_config.binaryURL = FileURL(QStringLiteral("/bin/whisper-cli"));
        m_config.modelURL = FileURL(QStringLiteral("/model.bin"));
        m_config.outputDirectoryURL = FileURL(QStringLiteral("/transcripts"));
        m_request.audioFileURL = FileURL(QStringLiteral("/cache/recording.wav"));
        m_files.addExecutable(m_config.binaryURL.path());
        m_files.files[m_config.modelURL.path()];
        m_files.files[m_request.audioFileURL.path()];
    }

    QString outputPath() const {
        return QStringLiteral("/transcripts/%1.txt")
            .arg(m_request.id.toString(QUuid::WithoutBraces).toUpper());
    }

    /// A process that leaves `content` as its transcript.
    FakeProcessLauncher::Reply transcript(const QByteArray &content) {
        return { .work = [this, content](const QStringList &) { m_files.files[outputPath()] = content; } };
    }

    TranscriptionResult run(FakeProcessLauncher::Reply reply) {
        m_launcher.replies.push_back(std::move(reply));
        WhisperCLIEngine engine(m_config, m_files, m_launcher, m_clock);
        return awaitTask(engine.transcribe(m_request), [this] {
            m_clock.runPosted();
            std::this_thread::yield();
        });
    }

    QString failure(FakeProcessLauncher::Reply reply) {
        return errorOf([&] { run(std::move(reply)); });
    }

    VirtualClock m_clock;
    FakeFileManager m_files;
    FakeProcessLauncher m_launcher { m_clock };
    WhisperCLIConfiguration m_config;
    TranscriptionRequest m_request;
};

TEST_F(WhisperCLIEngineRules, ReturnsTheTrimmedTranscript) {
    FakeProcessLauncher::Reply reply = transcript(" Salut, ție!\n\n");
    reply.seconds = 2.5;
    reply.standardError = "chatter";
    const TranscriptionResult result = run(reply);
    EXPECT_EQ(result.id, m_request.id);
    EXPECT_EQ(result.text, QStringLiteral("Salut, ție!"));
    EXPECT_EQ(result.audioFileURL, m_request.audioFileURL);
    EXPECT_EQ(result.createdAt, VirtualClock::start + 2.5);
    EXPECT_EQ(m_launcher.processCalls, QStringList { QStringLiteral("waitUntilExit") });
}

TEST_F(WhisperCLIEngineRules, RunsTheBuiltCommand) {
    run(transcript("a"));
    const WhisperCLICommand command
        = WhisperCLICommandBuilder(m_config, m_files).makeCommand(m_request.audioFileURL, m_request.id);
    ASSERT_EQ(m_launcher.launches.size(), 1U);
    EXPECT_EQ(
        m_launcher.launches[0], (FakeProcessLauncher::Launch { command.executableURL, command.arguments }));
}

TEST_F(WhisperCLIEngineRules, PassesABuilderErrorWithoutStartingAProcess) {
    m_files.files.erase(m_config.modelURL.path());
    EXPECT_EQ(failure({}), QStringLiteral("Whisper model file not found at /model.bin."));
    EXPECT_TRUE(m_launcher.launches.empty());
}

TEST_F(WhisperCLIEngineRules, ATimeLimitEndsTheProcess) {
    m_config.executionTimeoutSeconds = 3.0;
    EXPECT_EQ(failure({ .seconds = std::nullopt }), QStringLiteral("whisper-cli timed out after 3.0s."));
    EXPECT_EQ(m_launcher.processCalls,
        (QStringList { QStringLiteral("terminate"), QStringLiteral("waitUntilExit") }));
    EXPECT_NEAR(m_clock.now() - VirtualClock::start, 3.0, 0.011);
}

TEST_F(WhisperCLIEngineRules, NoticesAnExitBeforeTheTimeLimit) {
    m_config.executionTimeoutSeconds = 3.0;
    FakeProcessLauncher::Reply reply = transcript("a");
    reply.seconds = 2.995;
    EXPECT_EQ(run(reply).text, QStringLiteral("a"));
    EXPECT_NEAR(m_clock.now() - VirtualClock::start, 2.995, 1e-4);
    EXPECT_TRUE(m_launcher.processCalls.isEmpty());
}

TEST_F(WhisperCLIEngineRules, ZeroOrLessIsNoLimit) {
    for (const double limit : { 0.0, -1.0 }) {
        m_config.executionTimeoutSeconds = limit;
        FakeProcessLauncher::Reply reply = transcript("a");
        reply.seconds = 10'000;
        EXPECT_EQ(run(reply).text, QStringLiteral("a"));
    }
}

TEST_F(WhisperCLIEngineRules, ReportsAFailureWithinTheTimeLimit) {
    m_config.executionTimeoutSeconds = 3.0;
    EXPECT_EQ(failure({ .seconds = 1, .terminationStatus = 9 }),
        QStringLiteral("whisper-cli failed with exit code 9. Unknown whisper-cli error."));
}

struct FailureText {
    const char *output;
    const char *error;
    const char *message;
};

class WhisperCLIEngineMessage : public WhisperCLIEngineRules,
                                public testing::WithParamInterface<FailureText> { };

TEST_P(WhisperCLIEngineMessage, IsTheErrorTextElseTheOutput) {
    EXPECT_EQ(failure({ .terminationStatus = 2,
                  .standardOutput = GetParam().output,
                  .standardError = GetParam().error }),
        QStringLiteral("whisper-cli failed with exit code 2. ") + QString::fromUtf8(GetParam().message));
    EXPECT_EQ(m_launcher.processCalls,
        (QStringList { QStringLiteral("waitUntilExit"), QStringLiteral("readStandardError"),
            QStringLiteral("readStandardOutput") }));
}

INSTANTIATE_TEST_SUITE_P(Table, WhisperCLIEngineMessage,
    testing::Values(FailureText { "", "", "Unknown whisper-cli error." },
        FailureText { " \n", "\t\n", "Unknown whisper-cli error." }, FailureText { "out\n", "", "out" },
        FailureText { "out", " err \n", "err" }, FailureText { "out", "\xFF bad", "out" },
        FailureText { "\xFF", "\xC3", "Unknown whisper-cli error." },
        FailureText { "", "ăâ\n\nș\n", "ăâ\n\nș" }));

TEST_F(WhisperCLIEngineRules, PassesALaunchErrorUnchanged) {
    try {
        run({ .launchFailure = SystemError::fromErrno(ENOEXEC, QStringLiteral("/bin/whisper-cli")) });
        FAIL() << "no error";
    } catch (const SystemError &error) {
        EXPECT_EQ(error.errorDescription(), QStringLiteral("Exec format error: /bin/whisper-cli"));
    }
}

TEST_F(WhisperCLIEngineRules, ReportsAMissingOutputFile) {
    EXPECT_EQ(failure({}),
        QStringLiteral("whisper-cli finished but output file is missing at %1.").arg(outputPath()));
}

TEST_F(WhisperCLIEngineRules, AnUnreadableOutputFileIsASystemError) {
    m_files.contentsFailures.push_back(SystemError::fromErrno(EACCES, outputPath()));
    EXPECT_EQ(failure(transcript("a")), QStringLiteral("Permission denied: ") + outputPath());
}

TEST_F(WhisperCLIEngineRules, AnOutputFileThatIsNotUTF8IsASystemError) {
    for (const QByteArray &content : { QByteArray("a\xFF"), QByteArray("\xC3"), QByteArray("\xED\xA0\x80"),
             QByteArray("\xC0\xAF"), QByteArray("\xF5\x80\x80\x80") }) {
        try {
            run(transcript(content));
            FAIL() << "no error";
        } catch (const SystemError &error) {
            EXPECT_EQ(error.errorDescription(), QStringLiteral("File is not valid UTF-8: ") + outputPath());
        }
    }
}

TEST_F(WhisperCLIEngineRules, TheErrorForABlankTranscriptNamesTheRecording) {
    for (const QByteArray &content : { QByteArray(), QByteArray(" \n\t\r\n"), QByteArray("\u00A0\u2028") }) {
        EXPECT_EQ(failure(transcript(content)),
            QStringLiteral("whisper-cli produced an empty transcript for recording.wav."));
    }
}

TEST_F(WhisperCLIEngineRules, RunsCallsSequentially) {
    m_launcher.replies.push_back({ .terminationStatus = 1 });
    m_launcher.replies.push_back({ .terminationStatus = 2 });
    WhisperCLIEngine engine(m_config, m_files, m_launcher, m_clock);
    TaskOutcome<TranscriptionResult> first;
    TaskOutcome<TranscriptionResult> second;
    launch(follow(engine.transcribe(m_request), first));
    launch(follow(engine.transcribe(m_request), second));
    while (!second.hasEnded())
        m_clock.runPosted();
    ASSERT_TRUE(first.error);
    ASSERT_TRUE(second.error);
    EXPECT_TRUE(localizedDescription(first.error).contains(QStringLiteral("code 1")));
    EXPECT_TRUE(localizedDescription(second.error).contains(QStringLiteral("code 2")));
    const QStringList callsOfOne { QStringLiteral("waitUntilExit"), QStringLiteral("readStandardError"),
        QStringLiteral("readStandardOutput") };
    EXPECT_EQ(m_launcher.processCalls, callsOfOne + callsOfOne);
}

/// The main loop with a clock that is stopped until a script is ready and then jumps past every time limit at
/// each reading. It jumps repeatedly, because the limit may be set before or after that moment.
class ScriptClock final : public Clock {
public:
    explicit ScriptClock(const Script &script)
        : m_script(script) { }

    Date now() const override {
        if (m_script.isReady())
            ++m_leaps;
        return VirtualClock::start + 1e6 * m_leaps;
    }
    void post(std::function<void()> work) override { m_loop.post(std::move(work)); }
    void callAfter(double seconds, std::function<void()> work) override {
        m_loop.callAfter(seconds, std::move(work));
    }
    void block(double seconds) override { m_loop.block(seconds); }

private:
    const Script &m_script;
    mutable std::atomic<int> m_leaps = 0;
    MainLoopClock m_loop;
};

/// The engine with real processes and files.
class WhisperCLIEngineProcess : public testing::Test {
protected:
    TranscriptionResult run(const Script &script, std::optional<double> limit = std::nullopt) {
        WhisperCLIConfiguration config;
        config.binaryURL = m_binary;
        config.modelURL = script.modelURL();
        config.outputDirectoryURL = script.outputDirectoryURL();
        config.executionTimeoutSeconds = limit;
        ScriptClock clock(script);
        WhisperCLIEngine engine(config, m_files, m_launcher, clock);
        TranscriptionRequest request { m_id, script.audioURL() };
        return awaitTask(engine.transcribe(request),
            [] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
    }

    QString failure(const QStringList &commands, std::optional<double> limit = std::nullopt) {
        const Script script(commands);
        return errorOf([&] { run(script, limit); });
    }

    static QString failed(int code, const QString &message) {
        return QStringLiteral("whisper-cli failed with exit code %1. %2").arg(QString::number(code), message);
    }

    const QUuid m_id = QUuid::createUuid();
    FileURL m_binary = Script::binaryURL();
    LinuxFileManager m_files;
    LinuxProcessLauncher m_launcher;
};

TEST_F(WhisperCLIEngineProcess, ReturnsTheTranscriptAndKeepsTheFile) {
    const Script script({ QStringLiteral("transcript  Salut, ție!\\n") });
    const TranscriptionResult result = run(script);
    EXPECT_EQ(result.text, QStringLiteral("Salut, ție!"));
    EXPECT_EQ(QDir(script.outputDirectoryURL().path()).entryList(QDir::Files),
        QStringList { m_id.toString(QUuid::WithoutBraces).toUpper() + QStringLiteral(".txt") });
}

TEST_F(WhisperCLIEngineProcess, PassesTheArguments) {
    const Script script({ QStringLiteral("report"), QStringLiteral("transcript a") });
    run(script);
    const QString base
        = script.outputDirectoryURL().path() + u'/' + m_id.toString(QUuid::WithoutBraces).toUpper();
    const QString expected = QStringLiteral("argument: -m\nargument: %1\nargument: -f\nargument: %2\n"
                                            "argument: -l\nargument: ro\nargument: -otxt\nargument: -of\n"
                                            "argument: %3\ndescriptors: 0 1 2\n")
                                 .arg(script.modelURL().path(), script.audioURL().path(), base);
    EXPECT_TRUE(script.noteOf(QStringLiteral("report")).startsWith(expected));
}

TEST_F(WhisperCLIEngineProcess, ExitCodesAreFailures) {
    EXPECT_EQ(failure({ QStringLiteral("exit 1") }), failed(1, QStringLiteral("Unknown whisper-cli error.")));
    EXPECT_EQ(failure({ QStringLiteral("print stdout only output"), QStringLiteral("exit 2") }),
        failed(2, QStringLiteral("only output")));
    EXPECT_EQ(failure({ QStringLiteral("print stdout output"), QStringLiteral("print stderr the error\\n"),
                  QStringLiteral("transcript text"), QStringLiteral("exit 255") }),
        failed(255, QStringLiteral("the error")));
}

TEST_F(WhisperCLIEngineProcess, ASignalExitIsAFailureWithTheSignalNumber) {
    EXPECT_EQ(failure({ QStringLiteral("print stderr dying"), QStringLiteral("die %1").arg(SIGKILL) }),
        failed(SIGKILL, QStringLiteral("dying")));
}

TEST_F(WhisperCLIEngineProcess, AFullErrorPipeIsTheWholeMessage) {
    EXPECT_EQ(failure({ QStringLiteral("flood stderr 65536"), QStringLiteral("exit 3") }),
        failed(3, QString(65536, u'x')));
}

TEST_F(WhisperCLIEngineProcess, OutputOfASuccessIsDropped) {
    const Script script({ QStringLiteral("flood stdout 65536"), QStringLiteral("flood stderr 65536"),
        QStringLiteral("transcript a") });
    EXPECT_EQ(run(script).text, QStringLiteral("a"));
}

TEST_F(WhisperCLIEngineProcess, OutputBeyondPipeCapacityRunsIntoTheTimeLimit) {
    EXPECT_EQ(failure({ QStringLiteral("ready"), QStringLiteral("flood stdout 65537"),
                          QStringLiteral("transcript a") },
                  3.0),
        QStringLiteral("whisper-cli timed out after 3.0s."));
}

TEST_F(WhisperCLIEngineProcess, ATimeLimitEndsTheProcessAndIgnoresAPartialTranscript) {
    EXPECT_EQ(
        failure({ QStringLiteral("transcript part"), QStringLiteral("ready"), QStringLiteral("wait") }, 0.2),
        QStringLiteral("whisper-cli timed out after 0.2s."));
}

TEST_F(WhisperCLIEngineProcess, WaitsForASlowlyTerminatingProcess) {
    const Script script({ QStringLiteral("hold-termination"), QStringLiteral("ready"),
        QStringLiteral("await-termination"), QStringLiteral("transcript late") });
    EXPECT_EQ(errorOf([&] { run(script, 3.0); }), QStringLiteral("whisper-cli timed out after 3.0s."));
    EXPECT_EQ(QDir(script.outputDirectoryURL().path()).entryList(QDir::Files).size(), 1);
}

TEST_F(WhisperCLIEngineProcess, AnUnreachedTimeLimitHasNoEffect) {
    const Script script({ QStringLiteral("sleep 30"), QStringLiteral("transcript a") });
    EXPECT_EQ(run(script, 60.0).text, QStringLiteral("a"));
}

TEST_F(WhisperCLIEngineProcess, AMissingFileIsAMissingOutput) {
    const Script script({});
    EXPECT_EQ(errorOf([&] { run(script); }),
        QStringLiteral("whisper-cli finished but output file is missing at %1/%2.txt.")
            .arg(script.outputDirectoryURL().path(), m_id.toString(QUuid::WithoutBraces).toUpper()));
}

TEST_F(WhisperCLIEngineProcess, ReportsContentThatIsNotText) {
    EXPECT_TRUE(failure({ QStringLiteral("transcript a\\xFFb") })
                    .startsWith(QStringLiteral("File is not valid UTF-8: /")));
    EXPECT_EQ(failure({ QStringLiteral("transcript  \\n\\n ") }),
        QStringLiteral("whisper-cli produced an empty transcript for recording.wav."));
}

TEST_F(WhisperCLIEngineProcess, AGrandchildDoesNotBlockTheEngine) {
    const Script script(
        { QStringLiteral("leave-child"), QStringLiteral("print stderr left"), QStringLiteral("exit 4") });
    EXPECT_EQ(errorOf([&] { run(script); }), failed(4, QStringLiteral("left")));
    EXPECT_EQ(::kill(script.noteOf(QStringLiteral("child")).toInt(), SIGKILL), 0);
}

TEST_F(WhisperCLIEngineProcess, ANonExecutableCannotBeStarted) {
    const Script script({});
    m_binary = script.at(QStringLiteral("whisper-cli"));
    Script::write(m_binary, "no program");
    QFile::setPermissions(m_binary.path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(errorOf([&] { run(script); }), QStringLiteral("Exec format error: ") + m_binary.path());
    m_binary = FileURL(QDir::tempPath());
    EXPECT_EQ(errorOf([&] { run(script); }), QStringLiteral("Permission denied: ") + m_binary.path());
}

TEST_F(WhisperCLIEngineProcess, TheMainLoopKeepsRunning) {
    const Script script({ QStringLiteral("transcript a") });
    MainLoopClock clock;
    bool hasLoopRun = false;
    clock.post([&hasLoopRun] { hasLoopRun = true; });
    EXPECT_EQ(run(script).text, QStringLiteral("a"));
    EXPECT_TRUE(hasLoopRun);
}
} // namespace
