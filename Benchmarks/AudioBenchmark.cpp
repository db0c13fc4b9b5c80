#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "TolmiApp/Audio/LiveAudioCapture.h"

#include <QCoreApplication>
#include <QDir>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

namespace {
using std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int startCount = 20;
constexpr std::chrono::seconds idleTime { 10 };

/// Opens the microphone several times and prints the time to the first buffer.
void measureFirstBuffer(PulseConnection &connection) {
    double least = 1e9;
    double most = 0;
    double sum = 0;
    for (int start = 0; start < startCount; ++start) {
        PulseAudioEngine engine(connection);
        const auto begin = steady_clock::now();
        engine.start();
        const double elapsed = Milliseconds(steady_clock::now() - begin).count();
        least = std::min(least, elapsed);
        most = std::max(most, elapsed);
        sum += elapsed;
    }
    std::printf("first sound after opening: %.1f ms (%.1f to %.1f, %d starts)\n", sum / startCount, least,
        most, startCount);
}

/// Prints the CPU usage of the running capture while nothing is dictated.
void measureIdle(PulseConnection &connection) {
    PulseAudioEngine engine(connection);
    SndFileStore audioFiles;
    MainLoopClock clock;
    PulseMicrophonePermission permission(connection, clock);
    LinuxFileManager fileManager({ QDir::homePath(), {}, {}, QDir::tempPath() });
    LiveAudioCapture capture({ engine, audioFiles, permission, fileManager, clock });
    capture.warmupIfAuthorized();
    while (!engine.isRunning())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const std::clock_t cpuBegin = std::clock();
    const auto begin = steady_clock::now();
    std::this_thread::sleep_for(idleTime);
    const double cpu = double(std::clock() - cpuBegin) / CLOCKS_PER_SEC;
    const double elapsed = std::chrono::duration<double>(steady_clock::now() - begin).count();
    std::printf("warm capture, idle: %.2f %% of one core over %.1f s\n", 100 * cpu / elapsed, elapsed);
}
} // namespace

/// Needs a sound server with a microphone; Tools/virtual-desktop provides one.
int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    try {
        PulseConnection connection;
        measureFirstBuffer(connection);
        measureIdle(connection);
    } catch (const SystemError &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
