#pragma once

#include <QRect>

#include <functional>

class QScreen;
class QWindow;

/// A rounded rectangle in a window's logical pixels. A square with a radius of half its side is a disc.
struct RoundedRectangle {
    QRect frame;
    int radius;
};

/// Window-system settings for windows that stay above all others.
class FloatingWindows {
public:
    virtual ~FloatingWindows() = default;

    /// Keeps the window above all others and on all desktops, out of task lists, and exactly where the
    /// program puts it. Call before the window is first shown.
    virtual void prepare(QWindow &window) = 0;

    /// Makes the window click-through except for its `touched` part and, if the desktop does not support
    /// translucent windows, clips it to its `drawn` part.
    virtual void setShape(QWindow &window, const RoundedRectangle &touched, const RoundedRectangle &drawn)
        = 0;

    /// From now on calls `pressed` at each mouse press outside the window while it is visible, also on the
    /// desktop background. Scrolling does not count.
    virtual void watchPressesElsewhere(QWindow &window, std::function<void()> pressed) = 0;

    /// The screen that the user works on: that of the window with the keyboard, else the desktop's first one;
    /// null when there is none at all.
    virtual QScreen *mainScreen() = 0;
};
