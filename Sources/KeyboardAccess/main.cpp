#include "KeyboardAccess/KeyboardAccess.h"
#include "KeyboardAccess/SystemPrograms.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
enum ExitStatus {
    Done = 0,
    Failed = 1,
    Misused = 2,
    NotInstalled = 3,
};

/// Leaves nothing of what the caller may have prepared: environment, folder, descriptors, signals. The
/// standard streams are there, or a file that is opened could get the number of one and be printed into.
void leaveCallersSurroundings() {
    while (true) {
        const int descriptor = ::open("/dev/null", O_RDWR);
        if (descriptor < 0)
            std::abort();
        if (descriptor > STDERR_FILENO)
            break;
    }
    ::closefrom(STDERR_FILENO + 1);
    ::clearenv();
    if (::chdir("/") != 0)
        std::abort();
    ::umask(S_IWGRP | S_IWOTH);
    std::signal(SIGCHLD, SIG_DFL);
    // Both would end the program between two steps.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

int printState(KeyboardAccess::State state) {
    switch (state) {
    case KeyboardAccess::State::Installed:
        std::puts("installed");
        return Done;
    case KeyboardAccess::State::Outdated:
        std::puts("outdated");
        return NotInstalled;
    case KeyboardAccess::State::NotInstalled:
        break;
    }
    std::puts("not installed");
    return NotInstalled;
}

int act(std::string_view command) {
    const KeyboardAccess access({ .run = &SystemPrograms::run });
    if (command == "status")
        return printState(access.state());
    // Never by a set-user-id bit, where the caller would keep some hold on the process.
    if (::getuid() != 0 || ::geteuid() != 0)
        throw KeyboardAccess::Failure(
            "This needs the administrator: pkexec tolmi-keyboard-access install|remove");
    if (command == "install")
        access.install();
    else
        access.remove();
    return Done;
}
} // namespace

int main(int argc, char **argv) {
    leaveCallersSurroundings();
    const std::string_view command = argc == 2 ? argv[1] : "";
    if (command != "install" && command != "remove" && command != "status") {
        std::fputs("Usage: tolmi-keyboard-access install|remove|status\n", stderr);
        return Misused;
    }
    try {
        return act(command);
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return Failed;
    }
}
