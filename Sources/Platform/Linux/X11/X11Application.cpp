#include "Platform/Linux/X11/X11Application.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

// The macros of Xlib break Qt's headers and hide its names, so they come after them.
namespace {
constexpr QEvent::Type exposeEvent = QEvent::Expose;
constexpr QEvent::Type focusInEvent = QEvent::FocusIn;
} // namespace
#include <X11/Xlib.h>

namespace {

Display *display() {
    const auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native == nullptr ? nullptr : native->display();
}

/// Asks the window manager to activate the window, as a panel does for the user.
void requestActivation(Display *server, Window window) {
    constexpr long userAsked = 2;
    XEvent request {};
    request.xclient.type = ClientMessage;
    request.xclient.window = window;
    request.xclient.message_type = XInternAtom(server, "_NET_ACTIVE_WINDOW", False);
    request.xclient.format = 32;
    request.xclient.data.l[0] = userAsked;
    request.xclient.data.l[1] = CurrentTime;
    XSendEvent(server, DefaultRootWindow(server), False, SubstructureRedirectMask | SubstructureNotifyMask,
        &request);
    XFlush(server);
}

} // namespace

void X11Application::bringToFront(QWindow &window) {
    QtApplication::bringToFront(window);
    Display *const server = display();
    if (server == nullptr)
        return;
    if (window.isExposed())
        requestActivation(server, window.winId());
    else // The window manager does not know it before it is seen.
        window.installEventFilter(this);
}

bool X11Application::eventFilter(QObject *watched, QEvent *event) {
    auto &window = static_cast<QWindow &>(*watched);
    const bool isSeen = event->type() == exposeEvent && window.isExposed();
    // What came to the front by itself must not come again later, when the user may be elsewhere.
    if (isSeen || event->type() == focusInEvent)
        window.removeEventFilter(this);
    if (isSeen)
        requestActivation(display(), window.winId());
    return QtApplication::eventFilter(watched, event);
}
