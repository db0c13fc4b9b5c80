#pragma once

#include "Platform/Linux/Desktop/ActiveWindow.h"

#include <QByteArray>

class WaylandConnection;

/// The window that has the focus, on a compositor that tells other programs.
namespace WaylandActiveWindow {
/// Whether the compositor tells.
bool isOfferedBy(const WaylandConnection &connection);

/// Absent when nothing has the focus, the window names no application, or the compositor does not tell. Asks
/// over a connection of its own, so that nobody is woken when windows change. An empty name stands for the
/// socket of the environment.
std::optional<ActiveWindow> current(const QByteArray &socketName = {});
} // namespace WaylandActiveWindow
