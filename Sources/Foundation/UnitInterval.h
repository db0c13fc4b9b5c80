#pragma once

#include <algorithm>

/// The value limited to 0...1; what is not a number is 0.
constexpr double clampedToUnit(double value) {
    return std::min(1.0, std::max(0.0, value));
}
