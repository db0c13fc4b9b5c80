#include "Tolmictl/Bus.h"
#include "Tolmictl/CommandLine.h"
#include "Tolmictl/Failure.h"
#include "Tolmictl/KeyBindingTime.h"
#include "Tolmictl/Version.h"

#include <cstdio>

namespace {
/// At once, for whoever reads it from a pipe.
void print(const std::string &text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

void printStatus(Bus &bus, const CommandLine &line) {
    const auto printed
        = [&line](const Status &status) { print((line.wantsJSON ? jsonOf(status) : lineOf(status)) + '\n'); };
    if (line.follows)
        bus.follow(printed);
    printed(bus.status());
}

void printMethods(Bus &bus) {
    for (const OperationRow &row : bus.methods()) {
        print(row.operation + ": " + row.method + (row.isAvailable ? "\n" : " (does not work)\n"));
        if (!row.reason.empty())
            print("    " + row.reason + '\n');
    }
}

void run(const CommandLine &line) {
    if (line.wantsHelp)
        return print(helpText());
    if (line.wantsVersion)
        return print(std::string("tolmictl ") + tolmictlVersion + '\n');
    Bus bus;
    if (line.command->method)
        bus.call(line.command->method,
            line.command->takesTime ? std::optional(startOfThisProcess()) : std::optional<uint64_t>());
    else if (line.command->name == std::string("status"))
        printStatus(bus, line);
    else
        printMethods(bus);
}
} // namespace

int main(int argc, char **argv) {
    try {
        run(CommandLine({ argv + (argc > 0 ? 1 : 0), argv + argc }));
        return int(ExitStatus::Done);
    } catch (const Failure &failure) {
        std::fprintf(stderr, "tolmictl: %s\n", failure.what());
        return int(failure.status());
    }
}
