#include "TolmiCore/RuleBasedRefiner.h"

#include <QString>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {
/// A dictation of typical length, with fillers of both languages.
const QString text = QStringLiteral("deci  um, like, p\u0103i vreau s\u0103 trimit raportul m\u00e2ine "
                                    "diminea\u021b\u0103. uh, ok? you know, nu \u0219tiu "
                                    "dac\u0103 Maria poate veni, basically, dar mmm nu \u00eei scriu eu.");
constexpr double goal = 20;

/// Duration of one refinement in microseconds.
double measuredOnce(RuleBasedRefiner &refiner) {
    const auto start = std::chrono::steady_clock::now();
    const Task<QString> task = refiner.refine(text);
    const std::chrono::duration<double, std::micro> passed = std::chrono::steady_clock::now() - start;
    return passed.count();
}

double percentile(const std::vector<double> &sorted, double share) {
    return sorted[static_cast<size_t>(share * static_cast<double>(sorted.size() - 1))];
}
} // namespace

int main() {
    constexpr int warmUpCount = 2000;
    constexpr int measuredCount = 20000;
    RuleBasedRefiner refiner;
    for (int round = 0; round < warmUpCount; ++round)
        measuredOnce(refiner);
    std::vector<double> times;
    for (int round = 0; round < measuredCount; ++round)
        times.push_back(measuredOnce(refiner));
    std::sort(times.begin(), times.end());
    const double median = percentile(times, 0.5);
    std::printf("rule refine of %d characters: median %.1f us (goal at most %.0f), 99th percentile %.1f us, "
                "%d rounds\n",
        static_cast<int>(text.size()), median, goal, percentile(times, 0.99), measuredCount);
    return median <= goal ? 0 : 1;
}
