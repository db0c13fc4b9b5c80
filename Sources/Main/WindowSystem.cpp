#include "Main/WindowSystem.h"

#include "Foundation/Log.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/Desktop/LinuxDesktop.h"
#include "Platform/Linux/Wayland/WaylandFrontmostApplication.h"
#include "Platform/Linux/Wayland/WaylandPasteKeystroke.h"
#include "Platform/Linux/Wayland/WaylandPasteboard.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11AccessibilityRight.h"
#include "Platform/Linux/X11/X11Application.h"
#include "Platform/Linux/X11/X11EventTap.h"
#include "Platform/Linux/X11/X11FloatingWindows.h"
#include "Platform/Linux/X11/X11FrontmostApplication.h"
#include "Platform/Linux/X11/X11PasteKeystroke.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Linux/X11/X11StatusTray.h"

namespace {
void logWhyKeysDoNotWork(const QString &reason) {
    logLine(QStringLiteral("Tolmi: the key and the paste do not work: ") + reason);
}

/// What works only in some windows here.
void logLimits(const DesktopFacts &facts) {
    for (const auto operation : { DesktopOperation::Key, DesktopOperation::Paste, DesktopOperation::Clipboard,
             DesktopOperation::FrontApplication }) {
        const DesktopMethod best = bestDesktopMethod(operation, facts);
        for (const DesktopMethodState &state : desktopMethods(operation, facts)) {
            if (state.method == best && !state.limit.isEmpty())
                logLine(QStringLiteral("Tolmi: ") + state.limit);
        }
    }
}

std::unique_ptr<PasteKeystroke> makeKeystroke(const DesktopFacts &facts,
    const std::shared_ptr<InjectedKeys> &injectedKeys, const std::shared_ptr<PasteProgress> &progress) {
    if (bestDesktopMethod(DesktopOperation::Paste, facts) == DesktopMethod::WaylandKeyboard)
        return std::make_unique<WaylandPasteKeystroke>(progress);
    return std::make_unique<X11PasteKeystroke>(injectedKeys, progress);
}

std::unique_ptr<FrontmostApplication> makeFrontmost(const DesktopFacts &facts) {
    auto entries = DesktopEntries::ofThisDesktop();
    if (bestDesktopMethod(DesktopOperation::FrontApplication, facts) == DesktopMethod::WaylandWindows)
        return std::make_unique<WaylandFrontmostApplication>(std::move(entries));
    return std::make_unique<X11FrontmostApplication>(std::move(entries));
}

std::unique_ptr<Pasteboard> makePasteboard(
    const DesktopFacts &facts, const std::shared_ptr<PasteProgress> &progress) {
    if (bestDesktopMethod(DesktopOperation::Clipboard, facts) == DesktopMethod::WaylandClipboard)
        return std::make_unique<WaylandPasteboard>(progress);
    return std::make_unique<X11Pasteboard>(progress);
}

/// Watching and posting keys takes more of an X server than that it answers.
std::vector<OperationMethod> methodRows(const DesktopFacts &facts, AccessibilityRight &accessibility) {
    const Availability keys = accessibility.state();
    std::vector<OperationMethod> rows;
    for (const auto operation : { DesktopOperation::Key, DesktopOperation::Paste, DesktopOperation::Clipboard,
             DesktopOperation::FrontApplication, DesktopOperation::Overlay }) {
        OperationMethod row = operationMethod(operation, facts);
        const bool needsKeys = operation == DesktopOperation::Key || operation == DesktopOperation::Paste;
        const bool isOfXServer = bestDesktopMethod(operation, facts) == DesktopMethod::XServer;
        if (needsKeys && isOfXServer && !keys.isAvailable()) {
            row.isAvailable = false;
            row.reason = keys.reason;
        }
        rows.push_back(std::move(row));
    }
    return rows;
}
} // namespace

// A window of this program must lie among those of the X server to be placed right.
bool WindowSystem::prepareToolkit() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return true;
    const DesktopFacts &facts = LinuxDesktop::facts();
    if (!facts.hasXServer && !facts.hasWayland)
        return false;
    qputenv("QT_QPA_PLATFORM", facts.hasXServer ? "xcb" : "wayland");
    return true;
}

WindowSystem WindowSystem::ofThisSession(const DesktopLook &look) {
    const DesktopFacts &facts = LinuxDesktop::facts();
    logLimits(facts);
    const auto injectedKeys = std::make_shared<InjectedKeys>();
    const auto progress = std::make_shared<PasteProgress>();
    auto accessibility = std::make_unique<X11AccessibilityRight>(&logWhyKeysDoNotWork);
    const auto methods = [&facts, &right = *accessibility] { return methodRows(facts, right); };
    return { .application = std::make_unique<X11Application>(look),
        .taps = std::make_unique<X11EventTapFactory>(injectedKeys),
        .accessibility = std::move(accessibility),
        .keystroke = makeKeystroke(facts, injectedKeys, progress),
        .frontmost = makeFrontmost(facts),
        .pasteboard = makePasteboard(facts, progress),
        .floatingWindows = std::make_unique<X11FloatingWindows>(),
        .statusTray = std::make_unique<X11StatusTray>(),
        .methods = methods };
}
