#include "Desktop/SoundServer.h"

#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {
constexpr int patienceMilliseconds = 10000;

void writeSetup(const QString &path, const QString &socket) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("the settings of the sound server cannot be written");
    // Without norewinds what was just played is played again; without the remap there is no microphone, only
    // the monitor of a sink.
    file.write(
        "load-module module-null-sink sink_name=micfeed rate=48000 channels=2 format=float32le norewinds=1\n"
        "load-module module-remap-source master=micfeed.monitor source_name=mic\n"
        "set-default-source mic\n"
        "load-module module-native-protocol-unix socket="
        + QFile::encodeName(socket) + "\n");
}

/// Starts a program whose output goes nowhere. QProcess will not do: it forks, after which the thread
/// sanitizer no longer sees what this thread locks.
pid_t spawn(const std::vector<std::string> &command) {
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t process = 0;
    if (posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        throw std::runtime_error("the sound server cannot be started");
    posix_spawn_file_actions_destroy(&actions);
    return process;
}
} // namespace

SoundServer::SoundServer() {
    // A player whose server has gone must not take the test along.
    std::signal(SIGPIPE, SIG_IGN);
    const QString socket = m_folder.filePath(QStringLiteral("socket"));
    writeSetup(m_folder.filePath(QStringLiteral("setup.pa")), socket);
    qputenv("PULSE_SERVER", QFile::encodeName(QStringLiteral("unix:") + socket));
    start();
}

SoundServer::~SoundServer() {
    kill();
}

void SoundServer::start() {
    QFile::remove(m_folder.filePath(QStringLiteral("socket")));
    const std::string folder = QFile::encodeName(m_folder.path()).toStdString();
    // The message bus has room for one server, and that is the one of the desktop.
    m_process = spawn({ "/usr/bin/env", "DBUS_SESSION_BUS_ADDRESS=disabled:", "PULSE_RUNTIME_PATH=" + folder,
        "PULSE_STATE_PATH=" + folder, "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
        "--use-pid-file=no", "-F", folder + "/setup.pa" });
    if (!waitUntil([this] { return !tell("info").isEmpty(); }))
        throw std::runtime_error("the sound server does not start");
}

void SoundServer::kill() {
    if (m_process == 0)
        return;
    ::kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = 0;
}

void SoundServer::freeze() {
    ::kill(m_process, SIGSTOP);
}

void SoundServer::thaw() {
    ::kill(m_process, SIGCONT);
}

void SoundServer::addMicrophone() {
    tell("load-module module-remap-source master=micfeed.monitor source_name=mic");
    tell("set-default-source mic");
}

void SoundServer::removeMicrophone() {
    tell("unload-module module-remap-source");
}

QByteArray SoundServer::tell(const std::string &command) {
    FILE *pipe = popen(("pactl " + command + " 2>/dev/null").c_str(), "r");
    QByteArray answer;
    char piece[4096];
    while (const size_t count = fread(piece, 1, sizeof piece, pipe))
        answer.append(piece, qsizetype(count));
    pclose(pipe);
    return answer;
}

struct Speech::Player {
    explicit Player(std::function<float()> next)
        : pipe(popen("pacat --playback --device=micfeed --raw --format=float32le --rate=48000 --channels=1 "
                     "--latency-msec=400 2>/dev/null",
            "w"))
        , thread([this, next = std::move(next)] { feed(next); }) { }

    void feed(const std::function<float()> &next) {
        std::vector<float> samples(1024);
        while (!isEnding) {
            for (float &sample : samples)
                sample = next();
            if (fwrite(samples.data(), sizeof(float), samples.size(), pipe) != samples.size())
                return;
        }
    }

    std::atomic<bool> isEnding = false;
    FILE *pipe;
    std::thread thread;
};

Speech::Speech(std::function<float()> next)
    : m_player(std::make_unique<Player>(std::move(next))) { }

Speech::~Speech() {
    m_player->isEnding = true;
    m_player->thread.join();
    pclose(m_player->pipe);
}

bool waitUntil(const std::function<bool()> &condition) {
    using std::chrono::steady_clock;
    const auto deadline = steady_clock::now() + std::chrono::milliseconds(patienceMilliseconds);
    while (!condition()) {
        if (steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}
