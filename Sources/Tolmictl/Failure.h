#pragma once

#include <stdexcept>
#include <string>

/// What the exit status tells, as the manual page documents it.
enum class ExitStatus {
    Done = 0,
    Refused = 1,
    WrongUsage = 2,
    NotRunning = 3,
};

/// Why a command was not carried out, in words for the user.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string &message)
        : std::runtime_error(message)
        , m_status(status) { }

    ExitStatus status() const { return m_status; }

private:
    ExitStatus m_status;
};
