#pragma once

#include "TolmiApp/History/HistoryCodec.h"

#include <ostream>

// Entries that several tests use, and how failed expectations show them.

/// An entry with the required fields alone.
inline HistoryEntry plainHistoryEntry() {
    return { { .rawText = QStringLiteral("salut lume"),
                 .refinedText = QStringLiteral("Salut, lume!"),
                 .language = QStringLiteral("ro") },
        QUuid::fromString(QStringLiteral("0d5b6f0e-8e44-4c3b-9b1d-3a6e1c2f7a10")), { 769156800.25 } };
}

/// An entry with every field.
inline HistoryEntry fullHistoryEntry() {
    HistoryEntry entry = plainHistoryEntry();
    entry.durationSeconds = 4.2;
    entry.pasteTargetAppName = QStringLiteral("Notes");
    entry.pasteTargetBundleID = QStringLiteral("com.apple.Notes");
    entry.pasteTimestamp = Date { 769156800.75 };
    entry.audioFileRelativePath = QStringLiteral("recording-0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10.wav");
    entry.qualityPass = QualityPass::Fallback;
    entry.isPinned = true;
    return entry;
}

inline void PrintTo(const HistoryEntry &entry, std::ostream *stream) {
    const auto json = HistoryCodec::encode({ entry });
    *stream << (json ? json->toStdString() : "an entry that JSON cannot say");
}
