#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// Trade-off between speed and quality of transcription.
enum class DictationPerformanceMode {
    /// One pass.
    Faster,
    /// A second, heavier pass if the first result looks poor.
    MaxQuality,
};

template <>
struct RawValues<DictationPerformanceMode> {
    static constexpr std::array table {
        std::pair { DictationPerformanceMode::Faster, QLatin1String("faster") },
        std::pair { DictationPerformanceMode::MaxQuality, QLatin1String("maxQuality") },
    };
    static constexpr DictationPerformanceMode fallback = DictationPerformanceMode::Faster;
};
