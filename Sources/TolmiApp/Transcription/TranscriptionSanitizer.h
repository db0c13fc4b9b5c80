#pragma once

#include <QString>

/// Removes what speech recognition invents when it is given silence.
namespace TranscriptionSanitizer {

/// The trimmed text, or nothing when it is no more than a phrase that silence is known to give and the
/// recording was silent. `peakLevel` runs from 0 to 1.
QString sanitize(const QString &text, double peakLevel);

} // namespace TranscriptionSanitizer
