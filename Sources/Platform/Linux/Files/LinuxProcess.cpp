#include "Platform/Linux/Files/LinuxProcess.h"

#include "Foundation/Error.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

// glibc 2.36 declares these without extern "C".
extern "C" {
#include <sys/pidfd.h>
}

namespace {
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// Moves the descriptor above those of the standard streams: if this process has one of these closed, the
/// descriptor could have its number and be overwritten in the child.
FileDescriptor aboveStandardStreams(FileDescriptor descriptor) {
    if (!descriptor.isValid() || descriptor.get() > STDERR_FILENO)
        return descriptor;
    return FileDescriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

/// A close-on-exec pipe with a non-blocking reader. Returns 0 or an errno value.
int open(Pipe &pipe) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return errno;
    FileDescriptor readEnd(ends[0]);
    FileDescriptor writeEnd(ends[1]);
    pipe.readEnd = aboveStandardStreams(std::move(readEnd));
    pipe.writeEnd = aboveStandardStreams(std::move(writeEnd));
    const bool isReady = pipe.readEnd.isValid() && pipe.writeEnd.isValid()
        && ::fcntl(pipe.readEnd.get(), F_SETFL, O_NONBLOCK) == 0;
    return isReady ? 0 : errno;
}

Pipe makePipe(const QString &executablePath) {
    Pipe pipe;
    if (const int error = open(pipe))
        throw SystemError::fromErrno(error, executablePath);
    return pipe;
}

/// The file descriptors of the child.
class FileActions {
public:
    FileActions() { ::posix_spawn_file_actions_init(&m_actions); }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;

    /// Returns 0 or an errno value.
    int connect(int standardOutput, int standardError) {
        if (const int error = ::posix_spawn_file_actions_adddup2(&m_actions, standardOutput, STDOUT_FILENO))
            return error;
        if (const int error = ::posix_spawn_file_actions_adddup2(&m_actions, standardError, STDERR_FILENO))
            return error;
        return ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
    }
    const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

/// Resets the child's signal handling, as a shell does.
class SpawnAttributes {
public:
    SpawnAttributes() {
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&m_attributes); }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;

    const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

/// The executable and its arguments as argv.
class ArgumentVector {
public:
    ArgumentVector(const FileURL &executable, const QStringList &arguments) {
        m_bytes.push_back(QFile::encodeName(executable.path()));
        for (const QString &argument : arguments)
            m_bytes.push_back(QFile::encodeName(argument));
        for (QByteArray &bytes : m_bytes)
            m_pointers.push_back(bytes.data());
        m_pointers.push_back(nullptr);
    }

    char *const *get() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes;
    std::vector<char *> m_pointers;
};

pid_t spawn(const FileURL &executable, const QStringList &arguments, int standardOutput, int standardError) {
    const ArgumentVector vector(executable, arguments);
    const SpawnAttributes attributes;
    FileActions actions;
    pid_t child = -1;
    int error = actions.connect(standardOutput, standardError);
    if (error == 0)
        error
            = ::posix_spawn(&child, vector.get()[0], actions.get(), attributes.get(), vector.get(), environ);
    if (error != 0)
        throw SystemError::fromErrno(error, executable.path());
    return child;
}

/// Waits for the child of `descriptor` and returns its exit code, or the number of the signal that ended it.
int reap(int descriptor) {
    siginfo_t info {};
    while (::waitid(P_PIDFD, id_t(descriptor), &info, WEXITED) != 0 && errno == EINTR) { }
    return info.si_status;
}

/// A pidfd of the child. If none can be opened, the child is killed.
FileDescriptor watch(pid_t child, const QString &executablePath) {
    FileDescriptor descriptor = aboveStandardStreams(FileDescriptor(::pidfd_open(child, 0)));
    if (descriptor.isValid())
        return descriptor;
    const int error = errno;
    ::kill(child, SIGKILL);
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) { }
    throw SystemError::fromErrno(error, executablePath);
}

/// The remaining pipe content of a child that has ended. At most one pipe capacity is read, so that a
/// grandchild that keeps writing cannot hold up the reader.
QByteArray readRest(int descriptor) {
    const qsizetype capacity = std::max(::fcntl(descriptor, F_GETPIPE_SZ), 0);
    QByteArray bytes(capacity, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < capacity) {
        const ssize_t count = ::read(descriptor, bytes.data() + filled, size_t(capacity - filled));
        if (count > 0)
            filled += count;
        else if (count == 0 || errno != EINTR)
            break;
    }
    bytes.truncate(filled);
    return bytes;
}

/// Sends SIGTERM to the child of `descriptor`; does nothing if it has ended.
void sendTerminate(int descriptor) {
    ::pidfd_send_signal(descriptor, SIGTERM, nullptr, 0);
}
} // namespace

/// The children of one launcher whose Process still exists, by pidfd.
class HeldChildren {
public:
    void add(int descriptor) {
        const std::lock_guard lock(m_mutex);
        m_descriptors.insert(descriptor);
    }
    void remove(int descriptor) {
        const std::lock_guard lock(m_mutex);
        m_descriptors.erase(descriptor);
    }
    void terminateAll() {
        const std::lock_guard lock(m_mutex);
        std::ranges::for_each(m_descriptors, &sendTerminate);
    }

private:
    std::mutex m_mutex;
    std::set<int> m_descriptors;
};

namespace {
class LinuxProcess final : public Process {
public:
    LinuxProcess(
        std::shared_ptr<HeldChildren> siblings, const FileURL &executable, const QStringList &arguments)
        : LinuxProcess(executable, arguments, makePipe(executable.path()), makePipe(executable.path())) {
        m_siblings = std::move(siblings);
        m_siblings->add(m_child.get());
    }

    ~LinuxProcess() override {
        m_siblings->remove(m_child.get());
        // The child must be reaped, or it remains a zombie.
        if (isRunning())
            std::thread([child = std::move(m_child)] { reap(child.get()); }).detach();
    }

    bool isRunning() override { return !waitUntilExit(0); }

    void terminate() override {
        if (!m_status)
            sendTerminate(m_child.get());
    }

    bool waitUntilExit(double seconds) override {
        if (!m_status && (seconds < 0 || hasEndedWithin(seconds)))
            m_status = reap(m_child.get());
        return m_status.has_value();
    }

    int terminationStatus() const override { return m_status.value(); }
    QByteArray readStandardError() override { return readRest(m_standardError.get()); }
    QByteArray readStandardOutput() override { return readRest(m_standardOutput.get()); }

private:
    LinuxProcess(const FileURL &executable, const QStringList &arguments, Pipe output, Pipe error)
        : m_child(watch(
            spawn(executable, arguments, output.writeEnd.get(), error.writeEnd.get()), executable.path()))
        , m_standardOutput(std::move(output.readEnd))
        , m_standardError(std::move(error.readEnd)) { }

    bool hasEndedWithin(double seconds) const {
        using Clock = std::chrono::steady_clock;
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        pollfd wanted { m_child.get(), POLLIN, 0 };
        for (;;) {
            const std::chrono::duration<double> left = deadline - Clock::now();
            const int timeout = int(std::ceil(std::clamp(left.count(), 0.0, 1e6) * 1000));
            if (::poll(&wanted, 1, timeout) > 0)
                return true;
            if (left.count() <= 0)
                return false;
        }
    }

    std::shared_ptr<HeldChildren> m_siblings;
    FileDescriptor m_child;
    FileDescriptor m_standardOutput;
    FileDescriptor m_standardError;
    std::optional<int> m_status;
};
} // namespace

LinuxProcessLauncher::LinuxProcessLauncher()
    : m_children(std::make_shared<HeldChildren>()) {
    struct sigaction action { };
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

std::unique_ptr<Process> LinuxProcessLauncher::launch(
    const FileURL &executable, const QStringList &arguments) {
    return std::make_unique<LinuxProcess>(m_children, executable, arguments);
}

void LinuxProcessLauncher::terminateAll() {
    m_children->terminateAll();
}
