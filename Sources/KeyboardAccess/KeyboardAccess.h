#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/types.h>

/// The right of the user at the seat to read keyboards and to type by a virtual one: one rule for udev under
/// one fixed path, and what makes it take effect at once.
///
/// Written for the administrator's rights: it follows no link, replaces nothing that is not its own, and does
/// nothing in folders where another user could interfere. Every operation throws a Failure if it refuses or
/// fails.
class KeyboardAccess {
public:
    /// Why something was not done, as one line.
    class Failure : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    enum class State {
        Installed,
        /// Installed by another version.
        Outdated,
        NotInstalled,
    };

    /// The machine on which it acts.
    struct Machine {
        std::string root = "/";
        /// To whom its folders have to belong.
        uid_t owner = 0;
        /// Runs a program of the system; its exit status.
        std::function<int(const std::string &name, const std::vector<std::string> &arguments)> run;
    };

    explicit KeyboardAccess(Machine machine);

    State state() const;
    void install() const;
    /// Takes the rule away and what it has given. The module for virtual keyboards stays loaded, since others
    /// may use it.
    void remove() const;

private:
    void applyRules() const;
    void withdrawFromDevices() const;

    Machine m_machine;
};
