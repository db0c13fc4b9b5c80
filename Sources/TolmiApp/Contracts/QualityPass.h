#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The transcription pass whose text was kept.
enum class QualityPass {
    Single,
    Fallback,
};

template <>
struct RawValues<QualityPass> {
    static constexpr std::array table {
        std::pair { QualityPass::Single, QLatin1String("single") },
        std::pair { QualityPass::Fallback, QLatin1String("fallback") },
    };
    static constexpr QualityPass fallback = QualityPass::Single;
};
