#pragma once

#include <QPoint>
#include <QRect>

#include <functional>
#include <optional>

/// A window above all others and on every desktop that is click-through and never takes the focus. Main
/// thread only.
class OverlayWindow {
public:
    virtual ~OverlayWindow() = default;

    /// The screen of the window that has the keyboard, without the bars that the desktop keeps there; absent
    /// when there is no screen.
    virtual std::optional<QRect> visibleFrame() const = 0;

    /// Moves the window's top-left corner to `origin`.
    virtual void setOrigin(const QPoint &origin) = 0;

    /// Shows the window at full opacity, immediately, without activating the application.
    virtual void orderFront() = 0;

    /// Fades the window's opacity to zero within `seconds`, then calls `completion`, even if the window was
    /// shown again in between.
    virtual void fadeOut(double seconds, std::function<void()> completion) = 0;

    /// Hides the window.
    virtual void orderOut() = 0;
};
