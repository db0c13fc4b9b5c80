#pragma once

#include "desktop-driver/AccessibleElement.h"

#include <vector>

/// Reads elements many at a time: every question is on its way before the first answer is awaited, because
/// each waits for the program's next round of events.
class AccessibleTree {
public:
    /// The elements under a root, the root first and each before its children.
    static std::vector<AccessibleElement> under(const AccessibleElement &root);

    /// Reads role, name and states of these again.
    static void refresh(std::vector<AccessibleElement> &elements);
};
