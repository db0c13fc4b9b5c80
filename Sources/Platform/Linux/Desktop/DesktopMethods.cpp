#include "Platform/Linux/Desktop/DesktopMethods.h"

#include <algorithm>

namespace {
DesktopMethodState wayland(DesktopMethod method, bool isOffered, bool hasWayland, const char *missing) {
    if (!hasWayland)
        return { method, Availability::unavailable(QStringLiteral("This is no Wayland session.")), {} };
    if (!isOffered)
        return { method, Availability::unavailable(QString::fromLatin1(missing)), {} };
    return { method, Availability::available(), {} };
}

DesktopMethodState xServer(const DesktopFacts &facts, const char *limitOnWayland) {
    if (!facts.hasXServer)
        return { DesktopMethod::XServer, Availability::unavailable(QStringLiteral("There is no X server.")),
            {} };
    return { DesktopMethod::XServer, Availability::available(),
        facts.hasWayland ? QString::fromLatin1(limitOnWayland) : QString() };
}
} // namespace

std::vector<DesktopMethodState> desktopMethods(DesktopOperation operation, const DesktopFacts &facts) {
    switch (operation) {
    case DesktopOperation::Key:
        return { xServer(facts, "The key works only in windows that run through XWayland.") };
    case DesktopOperation::Paste:
        return { wayland(DesktopMethod::WaylandKeyboard, facts.letsType, facts.hasWayland,
                     "The compositor does not let programs type."),
            xServer(facts, "The text is pasted only into windows that run through XWayland.") };
    case DesktopOperation::Clipboard:
        return { wayland(DesktopMethod::WaylandClipboard, facts.showsClipboard, facts.hasWayland,
                     "The compositor does not let programs without a window see the clipboard."),
            xServer(facts, "The clipboard is seen as far as XWayland passes it on.") };
    case DesktopOperation::FrontApplication:
        return { wayland(DesktopMethod::WaylandWindows, facts.tellsFocus, facts.hasWayland,
                     "The compositor does not tell which window has the focus."),
            xServer(facts, "Only windows that run through XWayland are known by name.") };
    case DesktopOperation::Overlay:
        return { xServer(facts, "") };
    }
    return {};
}

DesktopMethod bestDesktopMethod(DesktopOperation operation, const DesktopFacts &facts) {
    const std::vector<DesktopMethodState> methods = desktopMethods(operation, facts);
    const auto best = std::ranges::find_if(
        methods, [](const DesktopMethodState &state) { return state.availability.isAvailable(); });
    return best == methods.end() ? DesktopMethod::XServer : best->method;
}
