#pragma once

#include <optional>

/// What the user logged in to when the desktop started. Main thread only.
class LoginSession {
public:
    virtual ~LoginSession() = default;

    /// For how many seconds the user has been logged in, as far as is known; never waits. Absent where nobody
    /// tells.
    virtual std::optional<double> age() const = 0;
};
