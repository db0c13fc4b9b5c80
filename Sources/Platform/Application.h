#pragma once

#include <QString>

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

    /// Brings the program before all others, even if the user works in another one.
    virtual void activate() = 0;

    /// Shows the program's first window with that title before all others and gives it the keyboard. Nothing
    /// happens when there is none.
    virtual void orderFront(const QString &title) = 0;
};
