#include "Platform/Linux/Desktop/ActiveWindow.h"

#include <algorithm>
#include <array>

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
bool isAmong(const std::array<const char *, count> &classes, const QString &name) {
    return std::ranges::find(classes, name.toLower().toStdString()) != classes.end();
}
} // namespace

bool ActiveWindow::isTerminal() const {
    return isAmong(terminalClasses, className) || isAmong(terminalClasses, instance);
}

bool ActiveWindow::pastesAtShiftInsert() const {
    return isAmong(shiftInsertClasses, className) || isAmong(shiftInsertClasses, instance);
}
