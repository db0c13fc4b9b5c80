#include "Support/FakeProcessLauncher.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace {
class FakeProcess final : public Process {
public:
    FakeProcess(FakeProcessLauncher::Reply reply, VirtualClock &clock, FakeProcessLauncher &launcher)
        : m_reply(std::move(reply))
        , m_clock(clock)
        , m_launcher(launcher)
        , m_calls(launcher.processCalls) {
        m_launcher.held.insert(this);
    }
    ~FakeProcess() override { m_launcher.held.erase(this); }

    bool isRunning() override { return m_reply.seconds != 0; }

    void terminate() override {
        m_calls.append(QStringLiteral("terminate"));
        if (!isRunning())
            return;
        m_reply.seconds = 0;
        m_reply.terminationStatus = SIGTERM;
    }

    bool waitUntilExit(double seconds) override {
        if (seconds < 0) {
            m_calls.append(QStringLiteral("waitUntilExit"));
            pass(m_reply.seconds ? *m_reply.seconds : throw std::logic_error("a wait without an end"));
        } else {
            pass(std::min(seconds, m_reply.seconds.value_or(seconds)));
        }
        return !isRunning();
    }

    int terminationStatus() const override { return m_reply.terminationStatus; }

    QByteArray readStandardError() override {
        m_calls.append(QStringLiteral("readStandardError"));
        return std::exchange(m_reply.standardError, {});
    }

    QByteArray readStandardOutput() override {
        m_calls.append(QStringLiteral("readStandardOutput"));
        return std::exchange(m_reply.standardOutput, {});
    }

private:
    void pass(double seconds) {
        m_clock.shift(seconds);
        if (m_reply.seconds)
            *m_reply.seconds -= seconds;
    }

    FakeProcessLauncher::Reply m_reply;
    VirtualClock &m_clock;
    FakeProcessLauncher &m_launcher;
    QStringList &m_calls;
};
} // namespace

std::unique_ptr<Process> FakeProcessLauncher::launch(
    const FileURL &executable, const QStringList &arguments) {
    launches.push_back({ executable, arguments });
    if (replies.empty())
        throw std::logic_error("a launch without a reply");
    Reply reply = std::move(replies.front());
    replies.pop_front();
    if (reply.launchFailure)
        throw *reply.launchFailure;
    if (reply.work)
        reply.work(arguments);
    return std::make_unique<FakeProcess>(std::move(reply), m_clock, *this);
}

void FakeProcessLauncher::terminateAll() {
    for (Process *process : held)
        process->terminate();
}
