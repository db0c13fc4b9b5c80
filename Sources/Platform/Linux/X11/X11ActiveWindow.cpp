#include "Platform/Linux/X11/X11ActiveWindow.h"

#include "Platform/Linux/X11/X11Display.h"

#include <QStringList>

#include <X11/Xatom.h>

#include <vector>

namespace {
QString textProperty(const X11Display &display, Window window, const char *property) {
    const auto value = display.property(window, display.atom(property));
    return value && value->format == 8 ? QString::fromUtf8(value->bytes) : QString();
}

std::optional<quint32> numberProperty(const X11Display &display, Window window, const char *property) {
    const auto value = display.property(window, display.atom(property));
    const auto numbers = value ? unpackedProperty(*value) : std::vector<quint32>();
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}
} // namespace

std::optional<ActiveWindow> X11ActiveWindow::current(const X11Display &display) {
    const Window window = numberProperty(display, display.root(), "_NET_ACTIVE_WINDOW").value_or(None);
    if (window == None)
        return {};
    const QStringList names = textProperty(display, window, "WM_CLASS").split(u'\0');
    ActiveWindow result { names.value(0), names.value(1),
        textProperty(display, window, "_GTK_APPLICATION_ID"), numberProperty(display, window, "_NET_WM_PID"),
        window };
    if (result.instance.isEmpty() && result.className.isEmpty())
        return {};
    if (result.applicationID.isEmpty())
        result.applicationID = textProperty(display, window, "_KDE_NET_WM_DESKTOP_FILE");
    return result;
}
