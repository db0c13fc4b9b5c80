#pragma once

#include "Platform/AccessibilityRight.h"
#include "Platform/Application.h"
#include "Platform/DesktopLook.h"
#include "Platform/EventTap.h"
#include "Platform/FloatingWindows.h"
#include "Platform/FrontmostApplication.h"
#include "Platform/OperationMethod.h"
#include "Platform/PasteKeystroke.h"
#include "Platform/Pasteboard.h"
#include "Platform/StatusTray.h"

#include <functional>
#include <memory>
#include <vector>

/// The adapters that speak to the window system: to its keyboard, its windows, its clipboard and its tray.
struct WindowSystem {
    /// Has the toolkit put the program's windows where these adapters reach them; false when there is no
    /// desktop to put them on. Called before there is an application object.
    static bool prepareToolkit();

    /// Those for the window system of this session. `look` outlives them.
    static WindowSystem ofThisSession(const DesktopLook &look);

    std::unique_ptr<Application> application;
    std::unique_ptr<EventTapFactory> taps;
    std::unique_ptr<AccessibilityRight> accessibility;
    std::unique_ptr<PasteKeystroke> keystroke;
    std::unique_ptr<FrontmostApplication> frontmost;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<FloatingWindows> floatingWindows;
    std::unique_ptr<StatusTray> statusTray;
    /// How each operation is done, and whether that works now.
    std::function<std::vector<OperationMethod>()> methods;
};
