#include "Platform/Linux/Desktop/DesktopMethods.h"

#include <QStringList>

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

namespace {
QString nameOf(DesktopOperation operation) {
    switch (operation) {
    case DesktopOperation::Key:
        return QStringLiteral("key");
    case DesktopOperation::Paste:
        return QStringLiteral("paste");
    case DesktopOperation::Clipboard:
        return QStringLiteral("clipboard");
    case DesktopOperation::FrontApplication:
        return QStringLiteral("front application");
    case DesktopOperation::Overlay:
        return QStringLiteral("overlay");
    }
    return {};
}

QString xServerWay(DesktopOperation operation) {
    switch (operation) {
    case DesktopOperation::Key:
        return QStringLiteral("raw keys of the X server");
    case DesktopOperation::Paste:
        return QStringLiteral("keys posted to the X server");
    case DesktopOperation::Clipboard:
        return QStringLiteral("the clipboard of the X server");
    case DesktopOperation::FrontApplication:
        return QStringLiteral("the active window of the X server");
    case DesktopOperation::Overlay:
        return QStringLiteral("a window of the X server");
    }
    return {};
}

QString wayOf(DesktopMethod method, DesktopOperation operation) {
    switch (method) {
    case DesktopMethod::XServer:
        return xServerWay(operation);
    case DesktopMethod::WaylandClipboard:
        return QStringLiteral("the clipboard of the Wayland compositor (data control)");
    case DesktopMethod::WaylandKeyboard:
        return QStringLiteral("a virtual keyboard of Wayland");
    case DesktopMethod::WaylandWindows:
        return QStringLiteral("the Wayland compositor's list of windows");
    }
    return {};
}
} // namespace

OperationMethod operationMethod(DesktopOperation operation, const DesktopFacts &facts) {
    const DesktopMethod best = bestDesktopMethod(operation, facts);
    QStringList reasons;
    OperationMethod row { nameOf(operation), wayOf(best, operation), true, {} };
    for (const DesktopMethodState &state : desktopMethods(operation, facts)) {
        // That this is no Wayland session is no lack.
        if (!state.availability.isAvailable() && (facts.hasWayland || state.method == DesktopMethod::XServer))
            reasons.append(state.availability.reason);
        if (state.method != best)
            continue;
        row.isAvailable = state.availability.isAvailable();
        if (!state.limit.isEmpty())
            reasons.append(state.limit);
        break;
    }
    row.reason = reasons.join(u' ');
    return row;
}
