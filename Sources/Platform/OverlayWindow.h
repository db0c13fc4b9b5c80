#pragma once

#include <QPoint>
#include <QRect>

#include <functional>
#include <optional>

/// A window that floats above every other one and on every desktop, lets clicks through and never takes the
/// focus. Main thread only.
class OverlayWindow {
public:
    virtual ~OverlayWindow() = default;

    /// The screen of the window that has the keyboard, without the bars that the desktop keeps there; absent
    /// when there is no screen.
    virtual std::optional<QRect> visibleFrame() const = 0;

    /// Puts the upper left corner of the window at `origin`.
    virtual void setOrigin(const QPoint &origin) = 0;

    /// Shows the window at full strength, at once, without activating the application.
    virtual void orderFront() = 0;

    /// Takes the strength of the window to nothing within `seconds`, then calls `completion`, even if the
    /// window was shown again in between.
    virtual void fadeOut(double seconds, std::function<void()> completion) = 0;

    /// Takes the window off the screen.
    virtual void orderOut() = 0;
};
