#pragma once

/// The two formulas that every level of the program goes through. Levels run from 0 to 1, linear in decibels.
namespace AudioMeterMath {

/// The value limited to 0...1.
double clamp(double value);

/// The level of a power in decibels: `floor` or less gives 0, 0 dB or more gives 1. A power that is not
/// finite or a floor that is not below 0 gives 0.
double normalizedLevel(float averagePower, float floor = -50.0F);

/// One step of `current` towards `target`: fast up and slow down, so that a meter jumps with the voice and
/// falls softly.
double smoothedLevel(double current, double target, double riseFactor = 0.34, double decayFactor = 0.14);

} // namespace AudioMeterMath
