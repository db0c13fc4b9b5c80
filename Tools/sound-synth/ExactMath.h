#pragma once

/// Functions with bit-identical results on every compiler and library, because they only add, multiply and
/// round down.
namespace ExactMath {

/// The sine of an angle in full turns.
double sine(double turns);

/// e to the power of `exponent`, from -64 to 0.
double exponential(double exponent);

/// A smooth bell curve for `position` from 0 to 1: 0 at both ends, 1 in the middle.
double raisedCosine(double position);

} // namespace ExactMath
