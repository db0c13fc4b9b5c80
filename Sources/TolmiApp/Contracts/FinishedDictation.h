#pragma once

#include "Foundation/Date.h"
#include "TolmiApp/Contracts/QualityPass.h"

#include <QString>

#include <optional>

/// The result of a finished dictation.
struct FinishedDictation {
    /// The transcript before refinement.
    QString rawText;
    /// The text that was pasted.
    QString refinedText;
    /// Code of the transcribed language.
    QString language;
    /// Seconds from the start of transcription until the final text was ready.
    std::optional<double> durationSeconds;
    std::optional<QString> pasteTargetAppName;
    std::optional<QString> pasteTargetBundleID;
    std::optional<Date> pasteTimestamp;
    /// Relative to the audio cache folder; the file may no longer exist.
    std::optional<QString> audioFileRelativePath;
    QualityPass qualityPass = QualityPass::Single;

    friend bool operator==(const FinishedDictation &, const FinishedDictation &) = default;
};
