#pragma once

#include <functional>

/// Looks for newer versions of the program and shows the user what it finds. Main thread only.
class UpdaterController {
public:
    /// Hears that a value was set; it asks for the value when it needs it.
    using Observer = std::function<void()>;

    virtual ~UpdaterController() = default;

    /// Begins to look by itself from time to time, where that is wanted, and allows checks.
    virtual void start() = 0;

    /// Starts a check that the user sees, where one may be started now.
    virtual void checkForUpdates() = 0;

    /// Whether a check may be started now.
    virtual bool canCheckForUpdates() const = 0;
    /// Whether it looks by itself; remembered between runs of the program.
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool isAutomatic) = 0;

    /// Calls `observer` at once, and after each time the value is set, also to what it was. Replaces an
    /// earlier observer.
    virtual void observeCanCheckForUpdates(Observer observer) = 0;
    virtual void observeAutomaticallyChecksForUpdates(Observer observer) = 0;
};
