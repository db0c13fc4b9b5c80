#include "Desktop/SoundServer.h"

#include <csignal>
#include <cstdio>
#include <sys/types.h>

#include <atomic>
#include <chrono>
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
} // namespace

SoundServer::SoundServer() {
    // A player whose server has gone must not take the test along.
    std::signal(SIGPIPE, SIG_IGN);
    const QString socket = m_folder.filePath(QStringLiteral("socket"));
    writeSetup(m_folder.filePath(QStringLiteral("setup.pa")), socket);
    qputenv("PULSE_SERVER", QFile::encodeName(QStringLiteral("unix:") + socket));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PULSE_RUNTIME_PATH"), m_folder.path());
    environment.insert(QStringLiteral("PULSE_STATE_PATH"), m_folder.path());
    // The message bus has room for one server, and that is the one of the desktop.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    start();
}

SoundServer::~SoundServer() {
    kill();
}

void SoundServer::start() {
    QFile::remove(m_folder.filePath(QStringLiteral("socket")));
    m_process.start(QStringLiteral("pulseaudio"),
        { QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
            QStringLiteral("--use-pid-file=no"), QStringLiteral("-F"),
            m_folder.filePath(QStringLiteral("setup.pa")) });
    if (!waitUntil([this] { return !tell({ QStringLiteral("info") }).isEmpty(); }))
        throw std::runtime_error("the sound server does not start");
}

void SoundServer::kill() {
    m_process.kill();
    m_process.waitForFinished(patienceMilliseconds);
}

void SoundServer::freeze() {
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void SoundServer::thaw() {
    ::kill(pid_t(m_process.processId()), SIGCONT);
}

void SoundServer::addMicrophone() {
    tell({ QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
        QStringLiteral("master=micfeed.monitor"), QStringLiteral("source_name=mic") });
    tell({ QStringLiteral("set-default-source"), QStringLiteral("mic") });
}

void SoundServer::removeMicrophone() {
    tell({ QStringLiteral("unload-module"), QStringLiteral("module-remap-source") });
}

QByteArray SoundServer::tell(const QStringList &arguments) {
    QProcess pactl;
    pactl.setStandardErrorFile(QProcess::nullDevice());
    pactl.start(QStringLiteral("pactl"), arguments);
    pactl.waitForFinished(patienceMilliseconds);
    return pactl.readAllStandardOutput();
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
