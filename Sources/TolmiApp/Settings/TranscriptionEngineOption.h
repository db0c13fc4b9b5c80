#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The speech-to-text engines that can be chosen.
enum class TranscriptionEngineOption {
    WhisperCLI,
};

template <>
struct RawValues<TranscriptionEngineOption> {
    static constexpr std::array table {
        std::pair { TranscriptionEngineOption::WhisperCLI, QLatin1String("whisperCLI") },
    };
    static constexpr TranscriptionEngineOption fallback = TranscriptionEngineOption::WhisperCLI;
};
