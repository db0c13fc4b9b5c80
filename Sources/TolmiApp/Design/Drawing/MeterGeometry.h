#pragma once

#include <QList>

/// Where the bars of the three meters stand, how long and how bright they are. Pure functions of the level
/// and of the time, so that drawing a meter is nothing but putting lines where these say.
namespace MeterGeometry {

/// One bar of a ring: a straight line outwards along `angle`, from the inner radius to that plus `length`.
struct RingBar {
    /// Radians on a screen whose y points down: -pi/2 is up, and the order runs clockwise.
    double angle = 0;
    double length = 0;
    /// Grey of the line, 0 is black and 1 is white.
    double shade = 0;
    /// Opacity, 0 to 1.
    double alpha = 0;
};

/// What tells the ring of the overlay from that of the voice orb.
struct RingStyle {
    int barCount;
    double innerRadius;
    double maximumLength;
    double barWidth;
    /// Opacity of a bar at the foot of the wave, once the gate is open; at its crest it is 1.
    double restAlpha;
    /// The bars at the top and the bottom are lighter than those at the sides; otherwise the crests of the
    /// wave are lighter than its feet.
    bool isShadedByPosition;
};

/// The ring of bars in the overlay.
inline constexpr RingStyle overlayRing { 24, 32, 22, 3, 0.5, true };
/// The ring of bars around the voice orb.
inline constexpr RingStyle orbRing { 32, 34, 30, 3.5, 0.48, false };

/// How far around the ring the bar stands, 0 at the first one and below 1 at the last.
double position(const RingStyle &style, int index);
/// The direction of the bar; the first one points up.
double angle(double position);
/// Four humps that run round the ring as `seconds` pass, 0 to 1.
double wave(double position, double seconds);
/// 0 below a level of 0.04, 1 from 0.165: silence shows no bars at all.
double gate(double level);
double length(const RingStyle &style, double level, double wave);
double alpha(const RingStyle &style, double level, double wave);
double shade(const RingStyle &style, double position, double wave);

/// The bars that can be seen, in their order. The level may be anything; it is limited to 0...1.
QList<RingBar> ringBars(const RingStyle &style, double level, double seconds);

/// Height of a bar of the signal wave, 10 to 72. A wave that is not active has a fixed pattern of its own.
double barHeight(int index, int barCount, bool isActive, double level);

} // namespace MeterGeometry
