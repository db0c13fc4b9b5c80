#pragma once

#include <QList>

/// Position, length and brightness of the bars of the three meters, as pure functions of level and time.
namespace MeterGeometry {

/// One bar of a ring: a straight line outwards along `angle`, from the inner radius to that plus `length`.
struct RingBar {
    /// Radians, with y pointing down: -pi/2 is up, increasing clockwise.
    double angle = 0;
    double length = 0;
    /// Grey level, 0 is black and 1 is white.
    double shade = 0;
    /// Opacity, 0 to 1.
    double alpha = 0;
};

/// The differences between the rings of the overlay and the voice orb.
struct RingStyle {
    int barCount;
    double innerRadius;
    double maximumLength;
    double barWidth;
    /// Opacity of a bar in the trough of the wave, once the gate is open; at its crest it is 1.
    double restAlpha;
    /// Whether bars at top and bottom are lighter than those at the sides; otherwise the wave's crests are
    /// lighter than its troughs.
    bool isShadedByPosition;
};

/// The ring of bars in the overlay.
inline constexpr RingStyle overlayRing { 24, 32, 22, 3, 0.5, true };
/// The ring of bars around the voice orb.
inline constexpr RingStyle orbRing { 32, 34, 30, 3.5, 0.48, false };

/// The bar's position around the ring, 0 for the first and below 1 for the last.
double position(const RingStyle &style, int index);
/// The direction of the bar; the first one points up.
double angle(double position);
/// A wave with four crests that moves around the ring over time, 0 to 1.
double wave(double position, double seconds);
/// 0 below a level of 0.04, 1 from 0.165: silence shows no bars at all.
double gate(double level);
double length(const RingStyle &style, double level, double wave);
double alpha(const RingStyle &style, double level, double wave);
double shade(const RingStyle &style, double position, double wave);

/// The visible bars, in order. The level is clamped to 0...1.
QList<RingBar> ringBars(const RingStyle &style, double level, double seconds);

/// Height of a bar of the signal wave, 10 to 72. An inactive wave has a fixed pattern.
double barHeight(int index, int barCount, bool isActive, double level);

} // namespace MeterGeometry
