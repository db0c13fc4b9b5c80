#include "Platform/Linux/Desktop/LinuxDesktop.h"

#include "Platform/Linux/Wayland/WaylandActiveWindow.h"
#include "Platform/Linux/Wayland/WaylandClipboard.h"
#include "Platform/Linux/Wayland/WaylandConnection.h"
#include "Platform/Linux/Wayland/WaylandPasteKeystroke.h"
#include "Platform/Linux/X11/X11Display.h"

namespace {
DesktopFacts gather() {
    DesktopFacts facts;
    facts.hasXServer = X11Display::open() != nullptr;
    const auto wayland = WaylandConnection::open();
    if (!wayland)
        return facts;
    facts.hasWayland = true;
    facts.showsClipboard = WaylandClipboard::isOfferedBy(*wayland);
    facts.letsType = WaylandPasteKeystroke::isOfferedBy(*wayland);
    facts.tellsFocus = WaylandActiveWindow::isOfferedBy(*wayland);
    return facts;
}
} // namespace

const DesktopFacts &LinuxDesktop::facts() {
    static const DesktopFacts facts = gather();
    return facts;
}
