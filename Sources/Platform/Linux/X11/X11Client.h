#pragma once

#include "Platform/Linux/X11/X11Display.h"

/// The connections to an X server, as the numbers of what was made over them tell them apart.
namespace X11Client {
/// Whether both were made over the same connection.
bool areOfOne(const X11Display &display, XID one, XID other);

/// A number that the toolkit of this program could have made; None when it is not connected to an X server.
/// Main thread only.
XID ofToolkit();
} // namespace X11Client
