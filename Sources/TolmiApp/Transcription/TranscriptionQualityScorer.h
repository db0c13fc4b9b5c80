#pragma once

#include <QString>

/// Estimates the quality of a transcript from its text and the loudness of the recording.
struct TranscriptionQualityScorer {
    /// From 0 (poor) to 1 (good); 0 for a blank text. `peakLevel` is 0 to 1.
    double score(const QString &text, double peakLevel) const;
};
