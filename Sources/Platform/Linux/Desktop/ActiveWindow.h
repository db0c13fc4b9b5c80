#pragma once

#include <QString>

#include <optional>

/// What the window that has the focus says of its application.
struct ActiveWindow {
    /// What X11 programs call themselves in the two parts of WM_CLASS, and what the others call themselves in
    /// both; never both empty.
    QString instance;
    QString className;
    /// The id of the application's desktop file, where the toolkit tells it; else empty.
    QString applicationID;
    std::optional<qint64> processID;
    /// Its number on an X server; another number that is not 0 elsewhere.
    unsigned long window = 0;

    /// Whether it is a terminal emulator, where Ctrl+V is a key for the program in it.
    bool isTerminal() const;
    /// Whether it pastes at Shift+Insert alone, as it comes; most such programs paste the primary selection.
    bool pastesAtShiftInsert() const;
};
