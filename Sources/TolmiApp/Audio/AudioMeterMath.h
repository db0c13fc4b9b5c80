#pragma once

/// The formulas for all audio levels of the program. Levels range from 0 to 1, linear in decibels.
namespace AudioMeterMath {

/// The value clamped to 0...1.
double clamp(double value);

/// The level of a power in decibels: `floor` or less is 0, 0 dB or more is 1. Also 0 for a power that is not
/// finite or a floor that is not negative.
double normalizedLevel(float averagePower, float floor = -50.0F);

/// One smoothing step of `current` towards `target`, with fast attack and slow decay.
double smoothedLevel(double current, double target, double riseFactor = 0.34, double decayFactor = 0.14);

} // namespace AudioMeterMath
