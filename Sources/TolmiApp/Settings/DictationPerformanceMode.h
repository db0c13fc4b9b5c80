#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// How much work a transcription may cost.
enum class DictationPerformanceMode {
    /// One pass.
    Faster,
    /// A second, heavier pass when the first one looks poor.
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
