#include "Loudness.h"

#include <array>
#include <cmath>

namespace {
struct Coefficients {
    std::array<double, 3> forward;
    std::array<double, 2> feedback;
};

// Both filters of ITU-R BS.1770 for 48 kHz: the head shelf, then the high pass.
constexpr Coefficients headShelf { { 1.53512485958697, -2.69169618940638, 1.19839281085285 },
    { -1.69065929318241, 0.73248077421585 } };
constexpr Coefficients highPass { { 1.0, -2.0, 1.0 }, { -1.99004745483398, 0.99007225036621 } };

class Filter {
public:
    explicit Filter(const Coefficients &coefficients)
        : m_coefficients(coefficients) { }

    double pass(double input) {
        const auto &[forward, feedback] = m_coefficients;
        const double output = forward[0] * input + m_first;
        m_first = forward[1] * input - feedback[0] * output + m_second;
        m_second = forward[2] * input - feedback[1] * output;
        return output;
    }

private:
    Coefficients m_coefficients;
    double m_first = 0;
    double m_second = 0;
};
} // namespace

double weightedMeanSquare(const Samples &samples) {
    Filter shelf(headShelf);
    Filter pass(highPass);
    double sum = 0;
    // The first round lets the filters reach the steady state of the loop.
    for (int round = 0; round < 2; ++round) {
        sum = 0;
        for (const double sample : samples) {
            const double weighted = pass.pass(shelf.pass(sample));
            sum += weighted * weighted;
        }
    }
    return sum / static_cast<double>(samples.size());
}

double loudness(const Samples &samples) {
    return -0.691 + 10 * std::log10(weightedMeanSquare(samples));
}
