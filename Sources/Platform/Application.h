#pragma once

#include <functional>
#include <optional>

/// A look that is forced on the program's windows.
enum class Appearance {
    Light,
    Dark,
};

/// The running application as the desktop sees it. Main thread only.
class Application {
public:
    virtual ~Application() = default;

    /// Applies the look to the process and every open window; absent follows the system.
    virtual void setAppearance(std::optional<Appearance> appearance) = 0;

    /// Calls `observer` each time the application comes to the front; replaces an earlier observer.
    virtual void setDidBecomeActiveObserver(std::function<void()> observer) = 0;
};
