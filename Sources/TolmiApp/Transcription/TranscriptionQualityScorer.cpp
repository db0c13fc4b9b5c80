#include "TolmiApp/Transcription/TranscriptionQualityScorer.h"

#include "Text/Text.h"

#include <algorithm>

namespace {
constexpr double base = 0.15;
constexpr double wordSaturation = 14.0;
constexpr double wordWeight = 0.4;
constexpr double lengthSaturation = 80.0;
constexpr double lengthWeight = 0.25;
constexpr double peakSaturation = 0.3;
constexpr double peakWeight = 0.2;
constexpr double ratioWeight = 0.1;
constexpr double penalty = 0.1;
constexpr double ratioLimit = 0.35;
} // namespace

double TranscriptionQualityScorer::score(const QString &text, double peakLevel) const {
    const QString trimmed = Text::trimmed(text);
    if (trimmed.isEmpty())
        return 0.0;
    const double words = double(Text::wordCount(trimmed));
    const double characters = double(Text::characterCount(trimmed));
    // Code points per grapheme cluster: combining marks can raise it above 1.
    const double ratio = double(Text::alphanumericCount(trimmed)) / characters;

    double sum = base;
    sum += std::min(1.0, words / wordSaturation) * wordWeight;
    sum += std::min(1.0, characters / lengthSaturation) * lengthWeight;
    sum += std::min(1.0, std::max(0.0, peakLevel) / peakSaturation) * peakWeight;
    sum += std::min(1.0, ratio) * ratioWeight;
    if (words <= 1.0)
        sum -= penalty;
    if (ratio < ratioLimit)
        sum -= penalty;
    return std::min(1.0, std::max(0.0, sum));
}
