#pragma once

#include <optional>
#include <string>

/// What Tolmi tells about itself.
struct Status {
    std::string state;
    /// Level of the microphone, 0 to 1; absent where nobody has asked for it.
    std::optional<double> level;
    std::string lastError;
    std::string version;

    friend bool operator==(const Status &, const Status &) = default;
};

/// One line for people: the state, and the error if it is one.
std::string lineOf(const Status &status);

/// One JSON object, in one line.
std::string jsonOf(const Status &status);
