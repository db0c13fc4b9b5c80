#include "TolmiApp/Audio/AudioMeterMath.h"

#include "Foundation/UnitInterval.h"

#include <algorithm>
#include <cmath>

namespace AudioMeterMath {

double clamp(double value) {
    return clampedToUnit(value);
}

double normalizedLevel(float averagePower, float floor) {
    if (!std::isfinite(averagePower) || !(floor < 0))
        return 0.0;
    const float limited = std::max(floor, std::min(averagePower, 0.0F));
    return clamp(double((limited - floor) / std::fabs(floor)));
}

double smoothedLevel(double current, double target, double riseFactor, double decayFactor) {
    const double from = clamp(current);
    const double to = clamp(target);
    const double factor = from < to ? riseFactor : decayFactor;
    return clamp(from + (to - from) * factor);
}

} // namespace AudioMeterMath
