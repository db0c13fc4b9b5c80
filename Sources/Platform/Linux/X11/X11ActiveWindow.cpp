#include "Platform/Linux/X11/X11ActiveWindow.h"

#include "Platform/Linux/X11/X11Display.h"

#include <QStringList>

#include <X11/Xatom.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {
/// Classes of terminal emulators in lower case, which paste at Ctrl+Shift+V unless they are named below.
constexpr std::array terminalClasses {
    "alacritty",
    "blackbox",
    "com.mitchellh.ghostty",
    "com.raggesilver.blackbox",
    "contour",
    "cool-retro-term",
    "deepin-terminal",
    "eterm",
    "foot",
    "footclient",
    "gnome-terminal",
    "gnome-terminal-server",
    "guake",
    "hyper",
    "io.elementary.terminal",
    "kgx",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "mlterm",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.gnome.terminal",
    "org.kde.konsole",
    "org.wezfurlong.wezterm",
    "pterm",
    "ptyxis",
    "putty",
    "qterminal",
    "rio",
    "roxterm",
    "sakura",
    "st",
    "st-256color",
    "tabby",
    "terminator",
    "terminology",
    "tilda",
    "tilix",
    "urxvt",
    "uxterm",
    "warp",
    "wezterm",
    "xfce4-terminal",
    "xterm",
    "yakuake",
    "zutty",
};

/// Classes of programs in lower case that paste at Shift+Insert.
constexpr std::array shiftInsertClasses { "emacs", "eterm", "gvim", "pterm", "putty", "urxvt", "uxterm",
    "xterm" };

template <size_t count>
bool contains(const std::array<const char *, count> &classes, const QString &name) {
    return std::ranges::find(classes, name.toLower().toStdString()) != classes.end();
}

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

std::optional<X11ActiveWindow> X11ActiveWindow::current(const X11Display &display) {
    const Window window = numberProperty(display, display.root(), "_NET_ACTIVE_WINDOW").value_or(None);
    if (window == None)
        return {};
    const QStringList names = textProperty(display, window, "WM_CLASS").split(u'\0');
    X11ActiveWindow result { names.value(0), names.value(1),
        textProperty(display, window, "_GTK_APPLICATION_ID"), numberProperty(display, window, "_NET_WM_PID"),
        window };
    if (result.instance.isEmpty() && result.className.isEmpty())
        return {};
    if (result.applicationID.isEmpty())
        result.applicationID = textProperty(display, window, "_KDE_NET_WM_DESKTOP_FILE");
    return result;
}

bool X11ActiveWindow::isTerminal() const {
    return contains(terminalClasses, className) || contains(terminalClasses, instance);
}

bool X11ActiveWindow::pastesAtShiftInsert() const {
    return contains(shiftInsertClasses, className) || contains(shiftInsertClasses, instance);
}
