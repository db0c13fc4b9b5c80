#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// The fields of an entry in the file.
enum class HistoryField {
    Id,
    Timestamp,
    RawText,
    RefinedText,
    Language,
    DurationSeconds,
    PasteTargetAppName,
    PasteTargetBundleID,
    PasteTimestamp,
    AudioFileRelativePath,
    QualityPass,
    IsPinned,
    /// A key that means nothing here, or one whose value was already read.
    Ignored,
};

/// Their names there, in their order.
inline constexpr std::array<std::string_view, size_t(HistoryField::Ignored)> historyFieldNames { "id",
    "timestamp", "rawText", "refinedText", "language", "durationSeconds", "pasteTargetAppName",
    "pasteTargetBundleID", "pasteTimestamp", "audioFileRelativePath", "qualityPass", "isPinned" };
