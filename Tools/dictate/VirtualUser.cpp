#include "dictate/VirtualUser.h"

#include <QSocketNotifier>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <array>
#include <cstdio>
#include <cstdlib>

struct VirtualUser::Connection {
    Display *display = nullptr;
    int inputOpcode = 0;
    std::unique_ptr<QSocketNotifier> notifier;

    ~Connection() {
        notifier.reset();
        if (display)
            XCloseDisplay(display);
    }
};

VirtualUser::VirtualUser()
    : m_connection(std::make_unique<Connection>()) {
    m_connection->display = XOpenDisplay(nullptr);
    int event = 0;
    int error = 0;
    if (!m_connection->display
        || !XQueryExtension(
            m_connection->display, "XInputExtension", &m_connection->inputOpcode, &event, &error)) {
        std::fputs("tolmi-dictate: there is no display to work on\n", stderr);
        std::exit(125);
    }
    Display *display = m_connection->display;
    int major = 2;
    int minor = 1;
    XIQueryVersion(display, &major, &minor);
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits {};
    XISetMask(bits.data(), XI_RawKeyPress);
    XISetMask(bits.data(), XI_RawKeyRelease);
    XIEventMask mask { XIAllMasterDevices, int(bits.size()), bits.data() };
    XISelectEvents(display, DefaultRootWindow(display), &mask, 1);
    XFlush(display);
    m_connection->notifier
        = std::make_unique<QSocketNotifier>(ConnectionNumber(display), QSocketNotifier::Read);
    connect(m_connection->notifier.get(), &QSocketNotifier::activated, this, [this] { readEvents(); });
}

VirtualUser::~VirtualUser() = default;

void VirtualUser::press(int keyCode) {
    XTestFakeKeyEvent(m_connection->display, unsigned(keyCode), True, CurrentTime);
    XFlush(m_connection->display);
}

void VirtualUser::release(int keyCode) {
    XTestFakeKeyEvent(m_connection->display, unsigned(keyCode), False, CurrentTime);
    XFlush(m_connection->display);
}

void VirtualUser::typeWithControl(const char *keySymbol) {
    const int control = keyCodeOf("Control_L");
    press(control);
    type(keySymbol);
    release(control);
}

void VirtualUser::type(const char *keySymbol) {
    press(keyCodeOf(keySymbol));
    release(keyCodeOf(keySymbol));
}

void VirtualUser::enter(const QString &text) {
    for (const QChar character : text)
        enter(character);
}

void VirtualUser::enter(QChar character) {
    // Latin-1 keysyms equal their code points; all others have the Unicode flag.
    constexpr KeySym unicode = 0x01000000;
    const KeySym symbol = character.unicode() < 0x100 ? character.unicode() : unicode | character.unicode();
    const KeyCode keyCode = XKeysymToKeycode(m_connection->display, symbol);
    if (keyCode == 0)
        return;
    const int shift = keyCodeOf("Shift_L");
    const bool isShifted = XkbKeycodeToKeysym(m_connection->display, keyCode, 0, 0) != symbol;
    if (isShifted)
        press(shift);
    press(keyCode);
    release(keyCode);
    if (isShifted)
        release(shift);
}

void VirtualUser::pointAt(QPoint place) {
    constexpr int screenOfThePointer = -1;
    XTestFakeMotionEvent(m_connection->display, screenOfThePointer, place.x(), place.y(), CurrentTime);
    XFlush(m_connection->display);
}

void VirtualUser::click(QPoint place) {
    constexpr unsigned leftButton = 1;
    // A window that is still handling the pointer's entry misses a press at the same moment.
    constexpr unsigned milliseconds = 50;
    pointAt(place);
    XTestFakeButtonEvent(m_connection->display, leftButton, True, milliseconds);
    XTestFakeButtonEvent(m_connection->display, leftButton, False, milliseconds);
    XFlush(m_connection->display);
}

int VirtualUser::keyCodeOf(const char *keySymbol) const {
    return XKeysymToKeycode(m_connection->display, XStringToKeysym(keySymbol));
}

std::optional<qint64> VirtualUser::timeOf(int keyCode, bool isPress) const {
    for (const KeyEvent &event : m_seen) {
        if (event.keyCode == keyCode && event.isPress == isPress)
            return event.milliseconds;
    }
    return std::nullopt;
}

void VirtualUser::readEvents() {
    Display *display = m_connection->display;
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        XGenericEventCookie &cookie = event.xcookie;
        if (cookie.type != GenericEvent || cookie.extension != m_connection->inputOpcode
            || !XGetEventData(display, &cookie))
            continue;
        const auto &raw = *static_cast<XIRawEvent *>(cookie.data);
        m_seen.push_back({ raw.detail, cookie.evtype == XI_RawKeyPress, qint64(raw.time) });
        XFreeEventData(display, &cookie);
    }
}
