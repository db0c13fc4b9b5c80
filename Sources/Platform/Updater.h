#pragma once

#include <functional>

/// Checks for newer versions of the program and shows them to the user. Main thread only.
class UpdaterController {
public:
    /// Called when a value was set; reads the value itself.
    using Observer = std::function<void()>;

    virtual ~UpdaterController() = default;

    /// Starts the periodic automatic checks, if enabled, and allows manual ones.
    virtual void start() = 0;

    /// Starts a check with visible progress, if one may be started now.
    virtual void checkForUpdates() = 0;

    /// Whether a check may be started now.
    virtual bool canCheckForUpdates() const = 0;
    /// Whether checks run automatically; stored between runs of the program.
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool isAutomatic) = 0;

    /// Calls `observer` at once and every time the value is set, even to the same value. Replaces an earlier
    /// observer.
    virtual void observeCanCheckForUpdates(Observer observer) = 0;
    virtual void observeAutomaticallyChecksForUpdates(Observer observer) = 0;
};
