#pragma once

#include <functional>

/// Runs the event loop until `condition` holds and tells whether it did within a generous time. For what the
/// operating system does in its own time only; everything else is driven by a VirtualClock.
bool untilTrue(const std::function<bool()> &condition);
