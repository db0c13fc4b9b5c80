#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "dictate/VirtualUser.h"

/// What one meets who goes through the window in front with the Tab key alone.
struct KeyboardWalk {
    /// In the order of the key, each once.
    std::vector<AccessibleElement> stops;
    /// Whether the key led back to the first.
    bool comesRound = false;
};

/// Presses Tab until it leads to a stop that was met before, or nowhere.
KeyboardWalk walkByTab(VirtualUser &user, const AccessibleProgram &program);

/// What the program's windows keep from those who use keyboard and screen reader: controls that have no name,
/// that do not say what they are, or that Tab does not reach. A line for each; none when all is well.
QStringList keyboardComplaints(VirtualUser &user, const AccessibleProgram &program);
