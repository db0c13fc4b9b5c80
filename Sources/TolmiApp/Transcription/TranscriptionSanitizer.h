#pragma once

#include <QString>

/// Removes text that speech recognition hallucinates in silence.
namespace TranscriptionSanitizer {

/// The trimmed text; empty if the recording was silent and the text is only a phrase known to be
/// hallucinated. `peakLevel` is 0 to 1.
QString sanitize(const QString &text, double peakLevel);

} // namespace TranscriptionSanitizer
