#include "TolmiApp/Design/Drawing/MeterGeometry.h"

#include "Foundation/UnitInterval.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace MeterGeometry {

namespace {
constexpr double fullTurn = 2 * std::numbers::pi;
constexpr double faintestAlpha = 0.01;
constexpr double shortestLength = 0.5;
} // namespace

double position(const RingStyle &style, int index) {
    return double(index) / style.barCount;
}

double angle(double position) {
    return position * fullTurn - fullTurn / 4;
}

double wave(double position, double seconds) {
    return std::fabs(std::sin(seconds * 3.4 + position * 2 * fullTurn));
}

double gate(double level) {
    return clampedToUnit((level - 0.04) * 8);
}

double length(const RingStyle &style, double level, double wave) {
    return style.maximumLength * level * (0.28 + 0.72 * wave);
}

double alpha(const RingStyle &style, double level, double wave) {
    return gate(level) * (style.restAlpha + (1 - style.restAlpha) * wave);
}

double shade(const RingStyle &style, double position, double wave) {
    return 0.58 + 0.34 * (style.isShadedByPosition ? std::fabs(std::cos(position * fullTurn)) : wave);
}

QList<RingBar> ringBars(const RingStyle &style, double level, double seconds) {
    const double limited = clampedToUnit(level);
    QList<RingBar> bars;
    for (int index = 0; index < style.barCount; ++index) {
        const double p = position(style, index);
        const double w = wave(p, seconds);
        const RingBar bar { angle(p), length(style, limited, w), shade(style, p, w),
            alpha(style, limited, w) };
        if (bar.alpha > faintestAlpha && bar.length > shortestLength)
            bars.append(bar);
    }
    return bars;
}

double barHeight(int index, int barCount, bool isActive, double level) {
    if (!isActive)
        return index % 4 == 0 ? 18 : 11;
    const double limited = clampedToUnit(level);
    if (limited <= 0.001)
        return index % 3 == 0 ? 13 : 10;
    const double position = double(index) / std::max(barCount - 1, 1);
    const double center = std::max(0.0, 1 - std::fabs(position - 0.5) * 1.8);
    const double texture = 0.58 + 0.42 * std::fabs(std::sin(index * 0.62));
    const double base = 10 + center * 6;
    const double reach = 20 + center * 42;
    return std::min(72.0, base + limited * reach * texture);
}

} // namespace MeterGeometry
