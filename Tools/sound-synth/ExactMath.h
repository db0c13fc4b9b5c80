#pragma once

/// Functions that give the same bits with every compiler and library, because they only add, multiply and
/// round down.
namespace ExactMath {

/// The sine of an angle in full turns.
double sine(double turns);

/// e to the power of `exponent`, from -64 to 0.
double exponential(double exponent);

/// A bell from 0 over 1 at the middle to 0 again, for `position` from 0 to 1, smooth at both ends.
double raisedCosine(double position);

} // namespace ExactMath
