#pragma once

#include <string>
#include <vector>

/// Programs of the system, run without anything that the caller of this one could have prepared.
namespace SystemPrograms {
/// Runs a program, found in the folders of the system alone, with these arguments and an environment of our
/// own; it reads and prints nothing but errors. Its exit status, or -1 if there is none.
int run(const std::string &name, const std::vector<std::string> &arguments);
} // namespace SystemPrograms
