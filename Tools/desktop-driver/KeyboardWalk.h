#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "dictate/VirtualUser.h"

/// The result of walking through the active window with the Tab key.
struct KeyboardWalk {
    /// In tab order, each once.
    std::vector<AccessibleElement> stops;
    /// Whether Tab returned to the first stop.
    bool returnsToStart = false;
};

/// Presses Tab until it reaches an earlier stop or does not move the focus.
KeyboardWalk walkByTab(VirtualUser &user, const AccessibleProgram &program);

/// Accessibility problems of the program's windows: controls without a name, with a wrong role, or
/// unreachable by Tab. One line each.
QStringList keyboardComplaints(VirtualUser &user, const AccessibleProgram &program);
