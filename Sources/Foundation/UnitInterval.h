#pragma once

#include <algorithm>

/// The value clamped to 0...1; NaN becomes 0.
constexpr double clampedToUnit(double value) {
    return std::min(1.0, std::max(0.0, value));
}
