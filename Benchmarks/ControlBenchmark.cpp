// Cost of a call of tolmictl, as a key binding makes it, beside the same call by dbus-send and the start of a
// program that does nothing. To be run on a virtual desktop.

#include "dictate/Home.h"
#include "dictate/RunningProgram.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr int rounds = 200;

using Arguments = std::vector<QByteArray>;

/// Seconds from the start of the program to its end; negative if it fails.
double secondsOf(const Arguments &arguments) {
    std::vector<char *> pointers;
    for (const QByteArray &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.constData()));
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t silent;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t process = 0;
    int status = -1;
    if (posix_spawnp(&process, pointers.front(), &silent, nullptr, pointers.data(), environ) == 0)
        waitpid(process, &status, 0);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    posix_spawn_file_actions_destroy(&silent);
    return status == 0 ? seconds.count() : -1;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}
} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    RunningProgram program;
    if (!prepareHome({}) || !program.start(folder + QStringLiteral("/tolmi"))) {
        std::puts(qPrintable(program.output()));
        return 1;
    }
    const Arguments tolmictl { (folder + QStringLiteral("/tolmictl")).toLocal8Bit(), "release" };
    const Arguments dbusSend { "dbus-send", "--session", "--print-reply", "--dest=org.tolmi.Tolmi",
        "/org/tolmi/Tolmi1", "org.tolmi.Tolmi1.Release" };
    const Arguments nothing { "true" };
    const std::vector all { tolmictl, dbusSend, nothing };
    std::vector<std::vector<double>> seconds(all.size());
    for (int round = 0; round < rounds; ++round) {
        for (size_t index = 0; index < all.size(); ++index) {
            seconds[index].push_back(secondsOf(all[index]));
            if (seconds[index].back() < 0) {
                std::printf("%s failed\n", all[index].front().constData());
                return 1;
            }
        }
    }
    std::printf("Medians of %d calls\n", rounds);
    for (size_t index = 0; index < all.size(); ++index)
        std::printf("  %-40s %6.2f ms\n", index == 0 ? "tolmictl" : all[index].front().constData(),
            1000 * median(seconds[index]));
    std::printf("  %-40s %6.2f\n", "tolmictl / dbus-send", median(seconds[0]) / median(seconds[1]));
    return 0;
}
