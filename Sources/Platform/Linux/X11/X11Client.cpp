// The macros of Xlib break the toolkit's headers, so those come first.
#include <QGuiApplication>

#include "Platform/Linux/X11/X11Client.h"

// Last, because of its many macros. Where the server counts the resources of a client from is known here
// only.
#include <X11/Xlibint.h>

bool X11Client::areOfOne(const X11Display &display, XID one, XID other) {
    return ((one ^ other) & ~display.get()->resource_mask) == 0;
}

XID X11Client::ofToolkit() {
    const auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 && x11->display() ? x11->display()->resource_base : None;
}
