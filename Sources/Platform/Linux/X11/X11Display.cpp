#include "Platform/Linux/X11/X11Display.h"

#include "Foundation/Log.h"

#include <X11/Xatom.h>
#include <poll.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>

namespace {
/// The error handlers of Xlib are for the whole process, so these must know which connections are ours.
class ErrorHandling {
public:
    static void add(Display *display) {
        std::lock_guard lock(s_mutex);
        if (!s_nextErrorHandler) {
            s_nextErrorHandler = XSetErrorHandler(&handleError);
            s_nextConnectionErrorHandler = XSetIOErrorHandler(&handleConnectionError);
        }
        s_displays.insert(display);
    }
    static void remove(Display *display) {
        std::lock_guard lock(s_mutex);
        s_displays.erase(display);
    }

private:
    static bool isOurs(Display *display) {
        std::lock_guard lock(s_mutex);
        return s_displays.contains(display);
    }
    static int handleError(Display *display, XErrorEvent *error) {
        // Windows of other programs may go at any time, so a request that fails is nothing unusual.
        return isOurs(display) ? 0 : s_nextErrorHandler(display, error);
    }
    static int handleConnectionError(Display *display) {
        return isOurs(display) ? 0 : s_nextConnectionErrorHandler(display);
    }

    static inline std::mutex s_mutex;
    static inline std::set<Display *> s_displays;
    static inline XErrorHandler s_nextErrorHandler = nullptr;
    static inline XIOErrorHandler s_nextConnectionErrorHandler = nullptr;
};

/// Xlib keeps units of 32 bits in longs.
template <typename Wide, typename Narrow>
std::vector<Wide> converted(const void *units, size_t count) {
    std::vector<Narrow> narrow(count);
    if (count > 0)
        std::memcpy(narrow.data(), units, count * sizeof(Narrow));
    return { narrow.begin(), narrow.end() };
}
} // namespace

std::unique_ptr<X11Display> X11Display::open(const QByteArray &name) {
    Display *display = XOpenDisplay(name.isEmpty() ? nullptr : name.constData());
    return std::unique_ptr<X11Display>(display ? new X11Display(display) : nullptr);
}

X11Display::X11Display(Display *display)
    : m_display(display) {
    ErrorHandling::add(display);
    // Xlib ends the program when a connection breaks, unless this says otherwise.
    XSetIOErrorExitHandler(
        display,
        [](Display *, void *self) {
            if (!std::exchange(static_cast<X11Display *>(self)->m_isBroken, true))
                logLine(QStringLiteral("Tolmi: a connection to the X server broke"));
        },
        this);
}

X11Display::~X11Display() {
    // Xlib waits for ever for the lock of a connection that broke, so that one stays as it is.
    if (!m_isBroken)
        XCloseDisplay(m_display);
    ErrorHandling::remove(m_display);
}

QString X11Display::atomName(Atom atom) const {
    if (m_isBroken)
        return {};
    char *name = XGetAtomName(m_display, atom);
    const QString result = QString::fromUtf8(name);
    if (name)
        XFree(name);
    return result;
}

std::vector<QString> X11Display::atomNames(const std::vector<quint32> &atoms) const {
    std::vector<Atom> asked(atoms.begin(), atoms.end());
    std::vector<char *> names(asked.size());
    if (!asked.empty() && !m_isBroken)
        XGetAtomNames(m_display, asked.data(), int(asked.size()), names.data());
    std::vector<QString> result;
    for (char *name : names) {
        result.push_back(QString::fromUtf8(name));
        if (name)
            XFree(name);
    }
    return result;
}

void X11Display::wait(int wakeDescriptor, std::optional<Instant> until) {
    if (m_isBroken || XPending(m_display) > 0)
        return;
    int milliseconds = -1;
    if (until) {
        const auto left
            = std::chrono::ceil<std::chrono::milliseconds>(*until - std::chrono::steady_clock::now());
        milliseconds = int(std::max<qint64>(left.count(), 0));
    }
    pollfd descriptors[] = { { ConnectionNumber(m_display), POLLIN, 0 }, { wakeDescriptor, POLLIN, 0 } };
    poll(descriptors, 2, milliseconds);
}

Window X11Display::selectionOwner(Atom selection) const {
    return m_isBroken ? None : XGetSelectionOwner(m_display, selection);
}

std::optional<XEvent> X11Display::takeEvent() {
    if (m_isBroken || XPending(m_display) <= 0 || m_isBroken)
        return {};
    XEvent event;
    XNextEvent(m_display, &event);
    return event;
}

std::optional<X11Property> X11Display::property(Window window, Atom property, bool removes) const {
    constexpr long everything = 0x1fffffff;
    X11Property result;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char *units = nullptr;
    if (m_isBroken
        || XGetWindowProperty(m_display, window, property, 0, everything, removes, AnyPropertyType,
               &result.type, &result.format, &count, &left, &units)
            != Success
        || result.type == None) {
        return {};
    }
    if (result.format == 32)
        result.bytes = packedProperty(converted<quint32, unsigned long>(units, count));
    else
        result.bytes
            = QByteArray(reinterpret_cast<const char *>(units), qsizetype(count) * (result.format / 8));
    XFree(units);
    return result;
}

void X11Display::setProperty(Window window, Atom property, const X11Property &value) const {
    if (m_isBroken)
        return;
    const auto count = size_t(value.bytes.size()) / size_t(value.format / 8);
    if (value.format == 32) {
        const auto units = converted<unsigned long, quint32>(value.bytes.constData(), count);
        XChangeProperty(m_display, window, property, value.type, value.format, PropModeReplace,
            reinterpret_cast<const unsigned char *>(units.data()), int(count));
        return;
    }
    XChangeProperty(m_display, window, property, value.type, value.format, PropModeReplace,
        reinterpret_cast<const unsigned char *>(value.bytes.constData()), int(count));
}

QByteArray packedProperty(const std::vector<quint32> &units) {
    return { reinterpret_cast<const char *>(units.data()), qsizetype(units.size() * sizeof(quint32)) };
}

std::vector<quint32> unpackedProperty(const X11Property &property) {
    if (property.format != 32)
        return {};
    return converted<quint32, quint32>(
        property.bytes.constData(), size_t(property.bytes.size()) / sizeof(quint32));
}
