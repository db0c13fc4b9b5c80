#include "Platform/Linux/Files/LinuxProcess.h"
#include "Support/FakeProcessLauncher.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {
/// A launcher under test. Each operation starts a process with a certain behaviour.
class Starter {
public:
    virtual ~Starter() = default;
    virtual std::unique_ptr<Process> startPrinter(
        int status, const QByteArray &output, const QByteArray &error)
        = 0;
    virtual std::unique_ptr<Process> startEndless() = 0;
    virtual std::unique_ptr<Process> startImpossible() = 0;
    virtual ProcessLauncher &launcher() = 0;
};

class FakeStarter final : public Starter {
public:
    std::unique_ptr<Process> startPrinter(
        int status, const QByteArray &output, const QByteArray &error) override {
        return start({ .terminationStatus = status, .standardOutput = output, .standardError = error });
    }
    std::unique_ptr<Process> startEndless() override { return start({ .seconds = std::nullopt }); }
    std::unique_ptr<Process> startImpossible() override {
        return start({ .launchFailure = SystemError::fromErrno(ENOENT, QStringLiteral("/no/program")) });
    }
    ProcessLauncher &launcher() override { return m_launcher; }

private:
    std::unique_ptr<Process> start(FakeProcessLauncher::Reply reply) {
        m_launcher.replies.push_back(std::move(reply));
        return m_launcher.launch(FileURL(QStringLiteral("/no/program")), {});
    }

    VirtualClock m_clock;
    FakeProcessLauncher m_launcher { m_clock };
};

class LinuxStarter final : public Starter {
public:
    std::unique_ptr<Process> startPrinter(
        int status, const QByteArray &output, const QByteArray &error) override {
        return shell(QStringLiteral("printf %s '%2'; printf %s '%3' >&2; exit %1")
                         .arg(QString::number(status), QString::fromUtf8(output), QString::fromUtf8(error)));
    }
    std::unique_ptr<Process> startEndless() override {
        return m_launcher.launch(FileURL(QStringLiteral("/bin/sleep")), { QStringLiteral("1000") });
    }
    std::unique_ptr<Process> startImpossible() override {
        return m_launcher.launch(FileURL(QStringLiteral("/no/program")), {});
    }
    ProcessLauncher &launcher() override { return m_launcher; }

private:
    std::unique_ptr<Process> shell(const QString &script) {
        return m_launcher.launch(FileURL(QStringLiteral("/bin/sh")), { QStringLiteral("-c"), script });
    }

    LinuxProcessLauncher m_launcher;
};

using MakeStarter = std::unique_ptr<Starter> (*)();

template <typename Kind>
std::unique_ptr<Starter> make() {
    return std::make_unique<Kind>();
}

class ProcessContract : public testing::TestWithParam<MakeStarter> {
protected:
    Starter &starter() { return *m_starter; }

private:
    std::unique_ptr<Starter> m_starter = GetParam()();
};

INSTANTIATE_TEST_SUITE_P(Kinds, ProcessContract, testing::Values(&make<FakeStarter>, &make<LinuxStarter>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Linux"; });

TEST_P(ProcessContract, ReturnsStatusAndOutput) {
    for (const int status : { 0, 1, 2, 255 }) {
        const auto process = starter().startPrinter(status, "out", "err");
        EXPECT_TRUE(process->waitUntilExit());
        EXPECT_FALSE(process->isRunning());
        EXPECT_EQ(process->terminationStatus(), status);
        EXPECT_EQ(process->readStandardError(), QByteArray("err"));
        EXPECT_EQ(process->readStandardOutput(), QByteArray("out"));
    }
}

TEST_P(ProcessContract, PipeContentIsReadOnce) {
    const auto process = starter().startPrinter(0, "out", "");
    process->waitUntilExit();
    EXPECT_EQ(process->readStandardOutput(), QByteArray("out"));
    EXPECT_EQ(process->readStandardOutput(), QByteArray());
    EXPECT_EQ(process->readStandardError(), QByteArray());
}

TEST_P(ProcessContract, WaitingAgainIsHarmless) {
    const auto process = starter().startPrinter(3, "", "");
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_TRUE(process->waitUntilExit(0));
    EXPECT_EQ(process->terminationStatus(), 3);
}

TEST_P(ProcessContract, RunsUntilTerminated) {
    const auto process = starter().startEndless();
    EXPECT_TRUE(process->isRunning());
    EXPECT_FALSE(process->waitUntilExit(0));
    EXPECT_FALSE(process->waitUntilExit(0.02));
    process->terminate();
    EXPECT_TRUE(process->waitUntilExit());
    EXPECT_EQ(process->terminationStatus(), SIGTERM);
}

TEST_P(ProcessContract, TerminatingAnEndedProcessIsHarmless) {
    const auto process = starter().startPrinter(4, "", "");
    process->waitUntilExit();
    process->terminate();
    EXPECT_EQ(process->terminationStatus(), 4);
}

TEST_P(ProcessContract, AStartThatFailsIsASystemError) {
    try {
        starter().startImpossible();
        FAIL() << "no error";
    } catch (const SystemError &error) {
        EXPECT_EQ(error.errorDescription(), QStringLiteral("No such file or directory: /no/program"));
    }
}

TEST_P(ProcessContract, TerminatesAllThatStillRun) {
    const auto ended = starter().startPrinter(3, "", "");
    ended->waitUntilExit();
    starter().startEndless()->terminate();
    const auto one = starter().startEndless();
    const auto other = starter().startEndless();
    starter().launcher().terminateAll();
    for (const auto &process : { one.get(), other.get() }) {
        EXPECT_TRUE(process->waitUntilExit());
        EXPECT_EQ(process->terminationStatus(), SIGTERM);
    }
    EXPECT_EQ(ended->terminationStatus(), 3);
}
} // namespace
