#include "Tolmictl/CommandLine.h"

#include "Tolmictl/Failure.h"

#include <algorithm>
#include <array>

namespace {
constexpr std::array commands {
    Command { "press", "KeyDown", true, "press the dictation key; for the press of a key binding" },
    Command { "release", "KeyUp", true, "let go of it; for the release of a key binding" },
    Command { "start", "Start", false, "begin to record" },
    Command { "stop", "Stop", false, "end the recording, and have it transcribed and pasted" },
    Command { "toggle", "Toggle", false, "one of the two, by whether something is being recorded" },
    Command { "status", nullptr, false, "print what Tolmi is doing" },
    Command { "studio", "ShowStudio", false, "open the Studio" },
    Command { "settings", "ShowSettings", false, "open the settings" },
    Command { "doctor", nullptr, false, "print how key, paste, clipboard and overlay work here" },
    Command { "quit", "Quit", false, "end Tolmi" },
};

[[noreturn]] void fail(const std::string &message) {
    throw Failure(ExitStatus::WrongUsage, message + " (--help lists the commands)");
}

const Command &commandNamed(const std::string &name) {
    const auto *found
        = std::ranges::find_if(commands, [&](const Command &each) { return name == each.name; });
    if (found == commands.end())
        fail("there is no command " + name);
    return *found;
}
} // namespace

CommandLine::CommandLine(const std::vector<std::string> &arguments) {
    for (const std::string &argument : arguments) {
        if (argument == "--help" || argument == "-h")
            wantsHelp = true;
        else if (argument == "--version")
            wantsVersion = true;
        else if (argument == "--follow")
            follows = true;
        else if (argument == "--json")
            wantsJSON = true;
        else if (argument.starts_with("-"))
            fail("there is no option " + argument);
        else if (command)
            fail("one command at a time");
        else
            command = &commandNamed(argument);
    }
    const bool isStatus = command && command->name == std::string("status");
    if ((follows || wantsJSON) && !isStatus)
        fail("--follow and --json belong to status");
    if (!command && !wantsHelp && !wantsVersion)
        fail("name a command");
}

std::string helpText() {
    std::string text = "Usage: tolmictl COMMAND\n\nDrives the running Tolmi. Commands:\n\n";
    for (const Command &command : commands) {
        std::string line = std::string("  ") + command.name;
        line.resize(std::max<size_t>(line.size() + 1, 12), ' ');
        text += line + command.description + '\n';
    }
    return text
        + "\nOptions of status:\n\n"
          "  --follow  go on printing, a line for each change, until Tolmi ends\n"
          "  --json    print JSON, an object a line\n"
          "\nOther options:\n\n"
          "  --help    this text\n"
          "  --version the version of tolmictl\n"
          "\nExit status: 0 done, 1 refused, 2 wrong usage, 3 Tolmi is not running.\n";
}
