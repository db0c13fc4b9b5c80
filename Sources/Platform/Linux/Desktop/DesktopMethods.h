#pragma once

#include "Platform/Availability.h"
#include "Platform/OperationMethod.h"

#include <vector>

/// What is known of the desktop that this program runs on, found out once.
struct DesktopFacts {
    /// Whether a Wayland compositor answers.
    bool hasWayland = false;
    /// Whether an X server answers, which on Wayland serves some of the windows only.
    bool hasXServer = false;
    /// What the Wayland compositor lets programs do: see the clipboard without a window, type, and learn
    /// which window has the focus.
    bool showsClipboard = false;
    bool letsType = false;
    bool tellsFocus = false;

    friend bool operator==(const DesktopFacts &, const DesktopFacts &) = default;
};

/// What the program does on a desktop in one way or another.
enum class DesktopOperation {
    /// Watching the dictation key.
    Key,
    /// Posting the paste command.
    Paste,
    Clipboard,
    /// Learning which application gets the text.
    FrontApplication,
    /// Showing the overlay.
    Overlay,
};

enum class DesktopMethod {
    XServer,
    /// The clipboard of a Wayland compositor (data control).
    WaylandClipboard,
    /// A keyboard of the program's own (virtual keyboard).
    WaylandKeyboard,
    /// The compositor's list of windows (foreign toplevels).
    WaylandWindows,
};

/// A way to do an operation.
struct DesktopMethodState {
    DesktopMethod method;
    /// Whether it can be used here.
    Availability availability;
    /// What it does not reach although it can be used, worded for the user; empty when it reaches everything.
    QString limit;
};

/// The ways to do an operation, the best first.
std::vector<DesktopMethodState> desktopMethods(DesktopOperation operation, const DesktopFacts &facts);

/// The best way that can be used; that of the X server when none can.
DesktopMethod bestDesktopMethod(DesktopOperation operation, const DesktopFacts &facts);

/// The way that is chosen for an operation, in words, with what it does not reach and why no better one was.
OperationMethod operationMethod(DesktopOperation operation, const DesktopFacts &facts);
