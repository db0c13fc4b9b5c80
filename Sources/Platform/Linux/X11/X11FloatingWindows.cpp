#include "Platform/Linux/X11/X11FloatingWindows.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QSocketNotifier>
#include <QWindow>

// The macros of Xlib break Qt's headers, so they come after them.
#include "Platform/Linux/X11/X11ActiveWindow.h"
#include "Platform/Linux/X11/X11Display.h"
#include "Platform/Linux/X11/X11Keyboard.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/shape.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
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

/// Tells of presses of the pointer's buttons outside a window as long as this lives. It only listens:
/// whatever is pressed gets its press.
class PressWatch : public QObject {
public:
    PressWatch(std::unique_ptr<X11Display> display, int opcode, WId window, std::function<void()> pressed)
        : m_display(std::move(display))
        , m_opcode(opcode)
        , m_window(window)
        , m_pressed(std::move(pressed))
        , m_notifier(ConnectionNumber(m_display->get()), QSocketNotifier::Read) {
        std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits {};
        XISetMask(bits.data(), XI_RawButtonPress);
        XIEventMask mask { XIAllMasterDevices, int(bits.size()), bits.data() };
        XISelectEvents(m_display->get(), m_display->root(), &mask, 1);
        XFlush(m_display->get());
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] { readEvents(); });
    }

private:
    void readEvents() {
        bool isPressedElsewhere = false;
        while (auto event = m_display->takeEvent())
            isPressedElsewhere |= isPress(event->xcookie) && !isPointerInside();
        // It would be readable for ever.
        if (m_display->isBroken())
            m_notifier.setEnabled(false);
        // A copy, since the window that goes now takes this with it.
        const auto pressed = m_pressed;
        if (isPressedElsewhere)
            pressed();
    }
    bool isPress(XGenericEventCookie &cookie) {
        if (cookie.type != GenericEvent || cookie.extension != m_opcode
            || !XGetEventData(m_display->get(), &cookie))
            return false;
        constexpr int firstWheelButton = 4, lastWheelButton = 7;
        const int button = static_cast<const XIRawEvent *>(cookie.data)->detail;
        XFreeEventData(m_display->get(), &cookie);
        return button < firstWheelButton || button > lastWheelButton;
    }
    /// What a window leaves to those below it is outside.
    bool isPointerInside() {
        Window root = None, child = None;
        int rootX = 0, rootY = 0, x = 0, y = 0;
        unsigned modifiers = 0;
        XQueryPointer(m_display->get(), m_display->root(), &root, &child, &rootX, &rootY, &x, &y, &modifiers);
        return child == m_window;
    }

    std::unique_ptr<X11Display> m_display;
    int m_opcode;
    WId m_window;
    std::function<void()> m_pressed;
    QSocketNotifier m_notifier;
};

std::unique_ptr<PressWatch> makePressWatch(const QWindow &window, std::function<void()> pressed) {
    auto display = X11Display::open();
    const auto opcode = display ? X11Keyboard::rawKeyOpcode(*display) : std::nullopt;
    if (!opcode)
        return {};
    return std::make_unique<PressWatch>(std::move(display), *opcode, window.winId(), std::move(pressed));
}

/// The middle of a window on the desktop; absent when the window has gone.
std::optional<QPoint> middleOf(const X11Display &display, Window window) {
    XWindowAttributes attributes {};
    Window child = None;
    int x = 0, y = 0;
    if (display.isBroken() || XGetWindowAttributes(display.get(), window, &attributes) == 0
        || XTranslateCoordinates(display.get(), window, display.root(), attributes.width / 2,
               attributes.height / 2, &x, &y, &child)
            == False)
        return {};
    return QPoint(x, y);
}

/// In the pixels of the display. The toolkit scales the sizes of screens, but not their places.
QRect nativeGeometry(const QScreen &screen) {
    return { screen.geometry().topLeft(), (screen.geometry().size() * screen.devicePixelRatio()) };
}

} // namespace

X11FloatingWindows::X11FloatingWindows()
    : m_display(X11Display::open()) { }

X11FloatingWindows::~X11FloatingWindows() = default;

QScreen *X11FloatingWindows::mainScreen() {
    std::optional<QPoint> middle;
    if (m_display) {
        // Every client is told of new keyboard layouts, and nobody else reads this connection.
        while (m_display->takeEvent()) { }
        if (const auto active = X11ActiveWindow::current(*m_display))
            middle = middleOf(*m_display, active->window);
    }
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto found = std::ranges::find_if(screens,
        [&middle](const QScreen *screen) { return middle && nativeGeometry(*screen).contains(*middle); });
    return found == screens.end() ? QGuiApplication::primaryScreen() : *found;
}

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

void X11FloatingWindows::watchPressesElsewhere(QWindow &window, std::function<void()> pressed) {
    if (display() == nullptr)
        return;
    QObject::connect(&window, &QWindow::visibleChanged, &window,
        [&window, pressed = std::move(pressed), watch = std::shared_ptr<PressWatch>()](
            bool isVisible) mutable { watch = isVisible ? makePressWatch(window, pressed) : nullptr; });
}
