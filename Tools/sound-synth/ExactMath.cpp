#include "ExactMath.h"

#include <cmath>

namespace {
constexpr double pi = 3.14159265358979323846;

/// Taylor series, accurate to 1e-11 within a quarter turn.
double sineOfSmallAngle(double radians) {
    double term = radians;
    double sum = radians;
    for (int power = 3; power <= 17; power += 2) {
        term *= -radians * radians / (power * (power - 1));
        sum += term;
    }
    return sum;
}
} // namespace

double ExactMath::sine(double turns) {
    double rest = turns - std::floor(turns + 0.5);
    if (rest > 0.25)
        rest = 0.5 - rest;
    else if (rest < -0.25)
        rest = -0.5 - rest;
    return sineOfSmallAngle(2 * pi * rest);
}

double ExactMath::exponential(double exponent) {
    constexpr int squarings = 10;
    const double part = exponent / (1 << squarings);
    double result = 1 + part * (1 + part / 2 * (1 + part / 3 * (1 + part / 4 * (1 + part / 5))));
    for (int squaring = 0; squaring < squarings; ++squaring)
        result *= result;
    return result;
}

double ExactMath::raisedCosine(double position) {
    return 0.5 - 0.5 * sine(position + 0.25);
}
