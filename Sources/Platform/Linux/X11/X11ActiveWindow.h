#pragma once

#include <QString>

#include <optional>

class X11Display;

/// What the window that has the focus says of its application.
struct X11ActiveWindow {
    /// The two parts of WM_CLASS; never both empty.
    QString instance;
    QString className;
    /// The id of the application's desktop file, where the toolkit tells it; else empty.
    QString applicationID;
    std::optional<qint64> processID;
    /// Its number.
    unsigned long window = 0;

    /// The window that has the focus now; absent when nothing has it or the window names no application.
    static std::optional<X11ActiveWindow> current(const X11Display &display);

    /// Whether it is a terminal emulator, where Ctrl+V is a key for the program in it.
    bool isTerminal() const;
    /// Whether it pastes at Shift+Insert alone, as it comes; most such programs paste the primary selection.
    bool pastesAtShiftInsert() const;
};
