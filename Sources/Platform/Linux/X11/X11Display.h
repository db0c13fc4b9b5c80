#pragma once

// The macros of Xlib break Qt's headers, so the one that brings the most comes before them.
#include <QObject>

#include <X11/Xlib.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

/// What a property of a window holds.
struct X11Property {
    Atom type = 0;
    /// Bits of one unit: 8, 16 or 32.
    int format = 8;
    /// The units in a row, each as wide as its format says.
    QByteArray bytes;
};

/// A connection to the X server whose failures never end the program: a request that fails has no effect, and
/// a connection that breaks is logged once. One thread at a time uses it.
class X11Display {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// Connects to the display named `name`, or to that of the environment when the name is empty; nothing
    /// when there is no such display.
    static std::unique_ptr<X11Display> open(const QByteArray &name = {});
    ~X11Display();
    X11Display(const X11Display &) = delete;
    X11Display &operator=(const X11Display &) = delete;

    Display *get() const { return m_display; }
    Window root() const { return DefaultRootWindow(m_display); }
    Atom atom(const char *name) const { return m_isBroken ? None : XInternAtom(m_display, name, False); }
    Atom atom(const QString &name) const { return atom(name.toUtf8().constData()); }
    /// The name of an atom that the server sent; empty when there is no such atom.
    QString atomName(Atom atom) const;
    /// The names of many at the cost of one.
    std::vector<QString> atomNames(const std::vector<quint32> &atoms) const;

    /// Whether the connection has gone. Every request is in vain then.
    bool isBroken() const { return m_isBroken; }

    /// Waits until an event is there to be read, `wakeDescriptor` (if not negative) is readable, or the
    /// instant has come; without one, as long as it takes.
    void wait(int wakeDescriptor, std::optional<Instant> until);

    /// The window that owns a selection; None when nobody does.
    Window selectionOwner(Atom selection) const;

    /// Takes the next event that has arrived, without waiting for one.
    std::optional<XEvent> takeEvent();

    /// The property of a window; nothing when the window or the property is not there.
    std::optional<X11Property> property(Window window, Atom property, bool removes = false) const;
    void setProperty(Window window, Atom property, const X11Property &value) const;

private:
    explicit X11Display(Display *display);

    Display *m_display;
    bool m_isBroken = false;
};

/// Whole numbers in a property of format 32.
QByteArray packedProperty(const std::vector<quint32> &units);
std::vector<quint32> unpackedProperty(const X11Property &property);
