#pragma once

#include <QRect>

#include <functional>

class QScreen;
class QWindow;

/// A rectangle with round corners, in a window's logical pixels. With a radius of half its side a square is a
/// disc.
struct RoundedRectangle {
    QRect frame;
    int radius;
};

/// What a desktop must be told about a window that floats above everything.
class FloatingWindows {
public:
    virtual ~FloatingWindows() = default;

    /// Before the window is shown for the first time: above all windows and on all desktops, in no task list,
    /// and exactly where the program puts it.
    virtual void prepare(QWindow &window) = 0;

    /// Leaves the pointer to the windows below, save for the `touched` part of this window; and where the
    /// desktop cannot show translucent windows, cuts the window down to the `drawn` part.
    virtual void setShape(QWindow &window, const RoundedRectangle &touched, const RoundedRectangle &drawn)
        = 0;

    /// From now on calls `pressed` each time the user presses something else than the window while it is
    /// visible, be it the bare desktop. Turning a wheel is no press.
    virtual void watchPressesElsewhere(QWindow &window, std::function<void()> pressed) = 0;

    /// The screen that the user works on: that of the window with the keyboard, else the desktop's first one;
    /// null when there is none at all.
    virtual QScreen *mainScreen() = 0;
};
