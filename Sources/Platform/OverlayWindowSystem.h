#pragma once

#include <QtGlobal>

class QWindow;

/// What a desktop must be told about a window that floats above everything.
class OverlayWindowSystem {
public:
    virtual ~OverlayWindowSystem() = default;

    /// Before the window is shown for the first time: above all windows and on all desktops, never with the
    /// focus, in no task list.
    virtual void prepare(QWindow &window) = 0;

    /// Leaves the pointer to the windows below, save for a disc in the middle of this window; and where the
    /// desktop cannot show translucent windows, cuts the window down to a disc. Diameters in logical pixels.
    virtual void setShape(QWindow &window, int touchedDiameter, int drawnDiameter) = 0;
};
