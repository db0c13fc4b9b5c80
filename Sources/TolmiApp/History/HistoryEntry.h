#pragma once

#include "Foundation/Date.h"
#include "TolmiApp/Contracts/QualityPass.h"

#include <QString>
#include <QUuid>

#include <optional>

/// The record of one finished dictation. Only the pin changes after it was made.
struct HistoryEntry {
    QUuid id = QUuid::createUuid();
    /// When the entry was made.
    Date timestamp;
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
    bool isPinned = false;

    friend bool operator==(const HistoryEntry &, const HistoryEntry &) = default;
};

// Lets a list of entries grow at its front by moving memory instead of strings.
Q_DECLARE_TYPEINFO(HistoryEntry, Q_RELOCATABLE_TYPE);
