#pragma once

#include <functional>

/// Runs the event loop until `condition` holds, at most `seconds`. Returns whether it holds.
bool waitUntil(const std::function<bool()> &condition, double seconds);

/// Runs the event loop for `seconds`.
void pause(double seconds);
