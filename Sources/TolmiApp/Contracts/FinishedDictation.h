#pragma once

#include "Foundation/Date.h"
#include "TolmiApp/Contracts/QualityPass.h"

#include <QString>

#include <optional>

/// What is known of a dictation when it is finished.
struct FinishedDictation {
    /// The transcript as it came from the transcription.
    QString rawText;
    /// The text that went to the paste.
    QString refinedText;
    /// Code of the language that was transcribed.
    QString language;
    /// Seconds from the start of transcription until the final text was ready.
    std::optional<double> durationSeconds;
    std::optional<QString> pasteTargetAppName;
    std::optional<QString> pasteTargetBundleID;
    std::optional<Date> pasteTimestamp;
    /// Counted from the folder of the audio cache; the file may be gone.
    std::optional<QString> audioFileRelativePath;
    QualityPass qualityPass = QualityPass::Single;

    friend bool operator==(const FinishedDictation &, const FinishedDictation &) = default;
};
