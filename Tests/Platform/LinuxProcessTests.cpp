#include "Platform/Linux/Files/LinuxProcess.h"

#include "Foundation/Error.h"
#include "Support/Script.h"

#include <QDir>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr int pipeCapacity = 65536;

std::unique_ptr<Process> start(const Script &script, const QStringList &furtherArguments = {}) {
    LinuxProcessLauncher launcher;
    return launcher.launch(Script::binaryURL(),
        QStringList { QStringLiteral("-m"), script.modelURL().path() } + furtherArguments);
}

/// Waits for an effect of another process, up to the test's own time limit.
template <typename Condition>
void waitUntil(Condition condition) {
    while (!condition())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

/// Kills the child that the stand-in left behind.
void endLeftChild(const Script &script) {
    const pid_t child = script.noteOf(QStringLiteral("child")).toInt();
    ASSERT_GT(child, 0);
    EXPECT_EQ(::kill(child, SIGKILL), 0);
}

/// The signal set after `label` in the stand-in's report; all signals if missing.
quint64 signalSet(const QString &report, const QString &label) {
    const qsizetype start = report.indexOf(label);
    return start < 0 ? ~quint64(0) : report.mid(start + label.size(), 16).toULongLong(nullptr, 16);
}

bool hasChildren() {
    siginfo_t info {};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

TEST(LinuxProcess, ASignalExitReturnsTheSignalNumber) {
    for (const int signal : { SIGKILL, SIGHUP, SIGUSR1 }) {
        const Script script({ QStringLiteral("die %1").arg(signal) });
        const auto process = start(script);
        process->waitUntilExit();
        EXPECT_EQ(process->terminationStatus(), signal);
    }
}

TEST(LinuxProcess, ArgumentsArriveAsTheyAre) {
    const Script script({ QStringLiteral("report") });
    start(script, { QString(), QStringLiteral("a b"), QStringLiteral("ț\"'$*") })->waitUntilExit();
    EXPECT_TRUE(script.noteOf(QStringLiteral("report"))
                    .contains(QStringLiteral("argument: \nargument: a b\nargument: ț\"'$*\n")));
}

TEST(LinuxProcess, TheChildHasTheStandardStreamsAndNothingElse) {
    const int leaked = ::open("/dev/null", O_RDONLY);
    const Script script({ QStringLiteral("report") });
    start(script)->waitUntilExit();
    ::close(leaked);
    EXPECT_TRUE(script.noteOf(QStringLiteral("report")).contains(QStringLiteral("descriptors: 0 1 2\n")));
}

TEST(LinuxProcess, TheChildHasDefaultSignalHandling) {
    sigset_t blocked;
    sigset_t before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto oldHandler = std::signal(SIGPIPE, SIG_IGN);
    const Script script({ QStringLiteral("report") });
    start(script)->waitUntilExit();
    std::signal(SIGPIPE, oldHandler);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const QString report = script.noteOf(QStringLiteral("report"));
    // The C library reserves signals 32 and 33.
    constexpr quint64 reserved = quint64(1) << 31 | quint64(1) << 32;
    EXPECT_EQ(signalSet(report, QStringLiteral("SigBlk:\t")), 0U);
    EXPECT_EQ(signalSet(report, QStringLiteral("SigIgn:\t")) & ~reserved, 0U);
}

TEST(LinuxProcess, FolderEnvironmentAndStandardInputAreInherited) {
    qputenv("TOLMI_TEST_VARIABLE", "țest");
    const Script script({ QStringLiteral("report") });
    start(script)->waitUntilExit();
    qunsetenv("TOLMI_TEST_VARIABLE");
    QByteArray input(4096, '\0');
    input.truncate(::readlink("/proc/self/fd/0", input.data(), size_t(input.size())));
    const QString report = script.noteOf(QStringLiteral("report"));
    EXPECT_TRUE(report.contains(QStringLiteral("folder: %1\n").arg(QDir::currentPath())));
    EXPECT_TRUE(report.contains(QStringLiteral("variable: țest\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("input: %1\n").arg(QString::fromUtf8(input))));
}

TEST(LinuxProcess, AProgramWithoutStandardStreamsStillGetsTheOutput) {
    const int savedOutput = ::dup(STDOUT_FILENO);
    const int savedError = ::dup(STDERR_FILENO);
    ::close(STDOUT_FILENO);
    ::close(STDERR_FILENO);
    const Script script({ QStringLiteral("print stdout out"), QStringLiteral("print stderr err") });
    const auto process = start(script);
    ::dup2(savedOutput, STDOUT_FILENO);
    ::dup2(savedError, STDERR_FILENO);
    ::close(savedOutput);
    ::close(savedError);
    process->waitUntilExit();
    EXPECT_EQ(process->readStandardOutput(), QByteArray("out"));
    EXPECT_EQ(process->readStandardError(), QByteArray("err"));
}

TEST(LinuxProcess, AFullPipeIsReadWhole) {
    const Script script({ QStringLiteral("flood stdout %1").arg(pipeCapacity), QStringLiteral("exit 1") });
    const auto process = start(script);
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_EQ(process->readStandardOutput(), QByteArray(pipeCapacity, 'x'));
}

TEST(LinuxProcess, OutputBeyondPipeCapacityBlocksTheChild) {
    const Script script({ QStringLiteral("ready"), QStringLiteral("flood stderr %1").arg(pipeCapacity + 1) });
    const auto process = start(script);
    waitUntil([&script] { return script.isReady(); });
    EXPECT_FALSE(process->waitUntilExit(0.1));
    process->terminate();
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_EQ(process->terminationStatus(), SIGTERM);
}

TEST(LinuxProcess, AGrandchildHoldingThePipesDoesNotBlockTheReader) {
    const Script script(
        { QStringLiteral("leave-child"), QStringLiteral("print stderr left"), QStringLiteral("exit 5") });
    const auto process = start(script);
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_EQ(process->terminationStatus(), 5);
    EXPECT_EQ(process->readStandardError(), QByteArray("left"));
    EXPECT_EQ(process->readStandardOutput(), QByteArray());
    endLeftChild(script);
}

TEST(LinuxProcess, AChildMayExitSlowly) {
    const Script script({ QStringLiteral("hold-termination"), QStringLiteral("ready"),
        QStringLiteral("await-termination"), QStringLiteral("exit 6") });
    const auto process = start(script);
    waitUntil([&script] { return script.isReady(); });
    process->terminate();
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_EQ(process->terminationStatus(), 6);
}

TEST(LinuxProcess, LeavesNoZombies) {
    const Script ended({});
    const Script abandoned({ QStringLiteral("ready"), QStringLiteral("sleep 20") });
    start(ended)->waitUntilExit();
    start(abandoned);
    waitUntil([&abandoned] { return abandoned.isReady(); });
    waitUntil([] { return !hasChildren(); });
}

TEST(LinuxProcess, AnInheritedIgnoredChildSignalDoesNotLoseTheStatus) {
    std::signal(SIGCHLD, SIG_IGN);
    const Script script({ QStringLiteral("exit 7") });
    const auto process = start(script);
    process->waitUntilExit();
    EXPECT_EQ(process->terminationStatus(), 7);
    std::signal(SIGCHLD, SIG_DFL);
}

TEST(LinuxProcess, ANonExecutableCannotBeStarted) {
    const Script script({});
    const FileURL text = script.at(QStringLiteral("program"));
    Script::write(text, "no program");
    const auto errorOf = [](const FileURL &url) {
        try {
            LinuxProcessLauncher().launch(url, {});
        } catch (const SystemError &error) {
            return error.errorDescription();
        }
        return QStringLiteral("no error");
    };
    EXPECT_EQ(errorOf(text), QStringLiteral("Permission denied: ") + text.path());
    EXPECT_EQ(errorOf(FileURL(QDir::tempPath())), QStringLiteral("Permission denied: ") + QDir::tempPath());
    QFile::setPermissions(text.path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(errorOf(text), QStringLiteral("Exec format error: ") + text.path());
    EXPECT_FALSE(hasChildren());
}
} // namespace
