#include "Platform/Linux/Wayland/WaylandFrontmostApplication.h"

#include "Platform/Linux/Wayland/WaylandActiveWindow.h"

WaylandFrontmostApplication::WaylandFrontmostApplication(DesktopEntries entries, QByteArray socketName)
    : m_entries(std::move(entries))
    , m_socketName(std::move(socketName)) { }

std::optional<FrontApplication> WaylandFrontmostApplication::current() {
    const auto window = WaylandActiveWindow::current(m_socketName);
    if (!window)
        return {};
    if (const auto entry = m_entries.find(*window, {}))
        return FrontApplication { entry->name, entry->id, window->isTerminal() };
    return FrontApplication { window->applicationID, window->applicationID, window->isTerminal() };
}
