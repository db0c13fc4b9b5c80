#include "Platform/Linux/X11/X11FloatingWindows.h"

#include <QGuiApplication>
#include <QRegion>
#include <QWindow>

// The macros of Xlib break Qt's headers, so they come after them.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/shape.h>

#include <vector>

namespace {

Display *display() {
    const auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native == nullptr ? nullptr : native->display();
}

/// Whether somebody blends windows into each other; without one, what is transparent is black.
bool isComposited(Display *display) {
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    return XGetSelectionOwner(display, XInternAtom(display, name.constData(), False)) != None;
}

QRegion nativeRegion(const QWindow &window, const RoundedRectangle &shape) {
    const double ratio = window.devicePixelRatio();
    const QRect frame(
        QRectF(QPointF(shape.frame.topLeft()) * ratio, QSizeF(shape.frame.size()) * ratio).toRect());
    const int radius = qRound(shape.radius * ratio);
    QRegion region(frame.adjusted(radius, 0, -radius, 0));
    region += frame.adjusted(0, radius, 0, -radius);
    QRect corner(frame.topLeft(), QSize(2 * radius, 2 * radius));
    for (const int left : { frame.left(), frame.right() + 1 - corner.width() }) {
        for (const int top : { frame.top(), frame.bottom() + 1 - corner.height() }) {
            corner.moveTo(left, top);
            region += QRegion(corner, QRegion::Ellipse);
        }
    }
    return region;
}

void combine(Display *display, const QWindow &window, int kind, const QRegion &region) {
    std::vector<XRectangle> rectangles;
    for (const QRect &rectangle : region) {
        rectangles.push_back(
            { short(rectangle.x()), short(rectangle.y()), static_cast<unsigned short>(rectangle.width()),
                static_cast<unsigned short>(rectangle.height()) });
    }
    XShapeCombineRectangles(
        display, window.winId(), kind, 0, 0, rectangles.data(), int(rectangles.size()), ShapeSet, Unsorted);
}

} // namespace

void X11FloatingWindows::prepare(QWindow &window) {
    Display *const server = display();
    if (server == nullptr)
        return;
    // Above a full-screen window too, which a window manager puts over those that merely stay on top: it
    // manages no notification of ours, so it cannot put it anywhere else either.
    window.setFlag(Qt::X11BypassWindowManagerHint);
    const Window native = window.winId();
    const Atom type = XInternAtom(server, "_NET_WM_WINDOW_TYPE_NOTIFICATION", False);
    XChangeProperty(server, native, XInternAtom(server, "_NET_WM_WINDOW_TYPE", False), XA_ATOM, 32,
        PropModeReplace, reinterpret_cast<const unsigned char *>(&type), 1);
    const unsigned long everyDesktop = 0xFFFFFFFF;
    XChangeProperty(server, native, XInternAtom(server, "_NET_WM_DESKTOP", False), XA_CARDINAL, 32,
        PropModeReplace, reinterpret_cast<const unsigned char *>(&everyDesktop), 1);
    XFlush(server);
}

void X11FloatingWindows::setShape(
    QWindow &window, const RoundedRectangle &touched, const RoundedRectangle &drawn) {
    Display *const server = display();
    if (server == nullptr)
        return;
    combine(server, window, ShapeInput, nativeRegion(window, touched));
    if (isComposited(server))
        XShapeCombineMask(server, window.winId(), ShapeBounding, 0, 0, None, ShapeSet);
    else
        combine(server, window, ShapeBounding, nativeRegion(window, drawn));
    XFlush(server);
}
