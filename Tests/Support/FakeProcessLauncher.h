#pragma once

#include "Foundation/Error.h"
#include "Platform/Process.h"
#include "Support/VirtualClock.h"

#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <vector>

/// Starts processes that follow a script. A wait moves the clock. The public members are the test's: to be
/// read and written only while no other thread calls.
class FakeProcessLauncher final : public ProcessLauncher {
public:
    /// How one process goes.
    struct Reply {
        /// Thrown instead of starting.
        std::optional<SystemError> launchFailure;
        /// Seconds of waiting until it ends by itself; absent, it ends only when it is asked to.
        std::optional<double> seconds = 0;
        int terminationStatus = 0;
        QByteArray standardOutput;
        QByteArray standardError;
        /// What it does when it starts, with its arguments.
        std::function<void(const QStringList &)> work;
    };

    struct Launch {
        FileURL executable;
        QStringList arguments;

        friend bool operator==(const Launch &, const Launch &) = default;
    };

    explicit FakeProcessLauncher(VirtualClock &clock)
        : m_clock(clock) { }

    /// Throws std::logic_error when no reply is left.
    std::unique_ptr<Process> launch(const FileURL &executable, const QStringList &arguments) override;
    /// Ends those that still run.
    void terminateAll() override;

    std::deque<Reply> replies;
    std::vector<Launch> launches;
    /// The calls of all processes in order, save isRunning and waits with a limit.
    QStringList processCalls;

    /// The processes that somebody holds; each keeps itself in it.
    std::set<Process *> held;

private:
    VirtualClock &m_clock;
};
