#pragma once

#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11FrontmostApplication.h"
#include "Platform/Linux/X11/X11PasteKeystroke.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "TolmiApp/Dictation/SystemPasteService.h"

#include <memory>

/// The paste service on the adapters of the real desktop.
struct DesktopPaste {
    MainLoopClock clock;
    std::shared_ptr<InjectedKeys> injectedKeys = std::make_shared<InjectedKeys>();
    std::shared_ptr<PasteProgress> progress = std::make_shared<PasteProgress>();
    X11Pasteboard pasteboard { progress };
    X11PasteKeystroke keystroke { injectedKeys, progress };
    X11FrontmostApplication frontmost { DesktopEntries::ofThisDesktop() };
    std::shared_ptr<SystemPasteService> service
        = std::make_shared<SystemPasteService>(pasteboard, keystroke, frontmost, clock);
};
