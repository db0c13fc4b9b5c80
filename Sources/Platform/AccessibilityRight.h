#pragma once

#include "Platform/Availability.h"

/// The right to watch keys and to post them.
class AccessibilityRight {
public:
    virtual ~AccessibilityRight() = default;

    /// Whether the right is granted now; if not, why.
    virtual Availability state() = 0;

    /// Makes the system ask the user, or explains to the user how to grant the right.
    virtual void prompt() = 0;

    /// Opens the system setting that grants the right, if there is one.
    virtual void openSettings() = 0;
};
