#pragma once

#include <QString>

/// Estimates how likely a transcript is good from nothing but its text and how loud the recording was.
struct TranscriptionQualityScorer {
    /// From 0 (poor) to 1 (good); 0 for a blank text. `peakLevel` runs from 0 to 1.
    double score(const QString &text, double peakLevel) const;
};
