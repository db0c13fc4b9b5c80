#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The available speech-to-text engines.
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
