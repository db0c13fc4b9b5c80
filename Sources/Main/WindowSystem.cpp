#include "Main/WindowSystem.h"

#include "Foundation/Log.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11AccessibilityRight.h"
#include "Platform/Linux/X11/X11Application.h"
#include "Platform/Linux/X11/X11EventTap.h"
#include "Platform/Linux/X11/X11FloatingWindows.h"
#include "Platform/Linux/X11/X11FrontmostApplication.h"
#include "Platform/Linux/X11/X11PasteKeystroke.h"
#include "Platform/Linux/X11/X11PasteProgress.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Linux/X11/X11StatusTray.h"

namespace {
void logWhyKeysDoNotWork(const QString &reason) {
    logLine(QStringLiteral("Tolmi: the key and the paste do not work: ") + reason);
}

/// Those of an X server, which also serves the windows that run through XWayland.
std::vector<OperationMethod> x11Methods(AccessibilityRight &accessibility) {
    const Availability keys = accessibility.state();
    const QString reason = keys.isAvailable() && qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        ? QStringLiteral("It reaches only windows that run through XWayland.")
        : keys.reason;
    const bool works = keys.isAvailable();
    return { { QStringLiteral("key"), QStringLiteral("raw keys of the X server"), works, reason },
        { QStringLiteral("paste"), QStringLiteral("keys posted to the X server"), works, reason },
        { QStringLiteral("clipboard"), QStringLiteral("the clipboard of the X server"), true, {} },
        { QStringLiteral("overlay"), QStringLiteral("a window of the X server"), true, {} } };
}
} // namespace

// The global key and the paste reach X11 windows, and a window of this program must lie among them to be
// placed right.
void WindowSystem::prepareToolkit() {
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    qputenv("QT_QPA_PLATFORM", "xcb");
    logLine(QStringLiteral(
        "Tolmi: on Wayland the key and the paste reach only windows that run through XWayland."));
}

WindowSystem WindowSystem::ofThisSession(const DesktopLook &look) {
    const auto injectedKeys = std::make_shared<InjectedKeys>();
    const auto pasteProgress = std::make_shared<X11PasteProgress>();
    auto accessibility = std::make_unique<X11AccessibilityRight>(&logWhyKeysDoNotWork);
    const auto methods = [&right = *accessibility] { return x11Methods(right); };
    return { .application = std::make_unique<X11Application>(look),
        .taps = std::make_unique<X11EventTapFactory>(injectedKeys),
        .accessibility = std::move(accessibility),
        .keystroke = std::make_unique<X11PasteKeystroke>(injectedKeys, pasteProgress),
        .frontmost = std::make_unique<X11FrontmostApplication>(DesktopEntries::ofThisDesktop()),
        .pasteboard = std::make_unique<X11Pasteboard>(pasteProgress),
        .floatingWindows = std::make_unique<X11FloatingWindows>(),
        .statusTray = std::make_unique<X11StatusTray>(),
        .methods = methods };
}
