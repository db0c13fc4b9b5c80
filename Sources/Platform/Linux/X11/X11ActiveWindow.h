#pragma once

#include "Platform/Linux/Desktop/ActiveWindow.h"

class X11Display;

/// The window that the window manager of an X server calls active.
namespace X11ActiveWindow {
/// Absent when nothing has the focus or the window names no application.
std::optional<ActiveWindow> current(const X11Display &display);
} // namespace X11ActiveWindow
