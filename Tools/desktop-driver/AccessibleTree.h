#pragma once

#include "desktop-driver/AccessibleElement.h"

#include <vector>

/// Reads many elements at a time: all requests are sent before the first reply is awaited, because each reply
/// takes an iteration of the program's event loop.
class AccessibleTree {
public:
    /// The elements of the tree at `root`, parents before children.
    static std::vector<AccessibleElement> under(const AccessibleElement &root);

    /// Updates role, name and states.
    static void refresh(std::vector<AccessibleElement> &elements);
};
