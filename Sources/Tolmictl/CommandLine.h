#pragma once

#include <string>
#include <vector>

/// One of the commands.
struct Command {
    const char *name;
    /// The method of org.tolmi.Tolmi1 that carries it out; null for those that read.
    const char *method;
    /// Whether the method takes the time of the key binding.
    bool takesTime;
    const char *description;
};

/// What the user has asked for.
struct CommandLine {
    /// Throws Failure for anything that is not documented.
    explicit CommandLine(const std::vector<std::string> &arguments);

    const Command *command = nullptr;
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool follows = false;
    bool wantsJSON = false;
};

/// The text of --help.
std::string helpText();
