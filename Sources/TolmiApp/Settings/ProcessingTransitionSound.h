#pragma once

#include "TolmiApp/Settings/RawValue.h"

/// The sounds that can play while a dictation is processed.
enum class ProcessingTransitionSound {
    None,
    Funk,
    Submarine,
    Blow,
    Morse,
    Pop,
    Bottle,
    Frog,
    Purr,
    Sosumi,
    Tink,
    Hero,
    Glass,
    Basso,
    Ping,
};

template <>
struct RawValues<ProcessingTransitionSound> {
    static constexpr std::array table {
        std::pair { ProcessingTransitionSound::None, QLatin1String("none") },
        std::pair { ProcessingTransitionSound::Funk, QLatin1String("funk") },
        std::pair { ProcessingTransitionSound::Submarine, QLatin1String("submarine") },
        std::pair { ProcessingTransitionSound::Blow, QLatin1String("blow") },
        std::pair { ProcessingTransitionSound::Morse, QLatin1String("morse") },
        std::pair { ProcessingTransitionSound::Pop, QLatin1String("pop") },
        std::pair { ProcessingTransitionSound::Bottle, QLatin1String("bottle") },
        std::pair { ProcessingTransitionSound::Frog, QLatin1String("frog") },
        std::pair { ProcessingTransitionSound::Purr, QLatin1String("purr") },
        std::pair { ProcessingTransitionSound::Sosumi, QLatin1String("sosumi") },
        std::pair { ProcessingTransitionSound::Tink, QLatin1String("tink") },
        std::pair { ProcessingTransitionSound::Hero, QLatin1String("hero") },
        std::pair { ProcessingTransitionSound::Glass, QLatin1String("glass") },
        std::pair { ProcessingTransitionSound::Basso, QLatin1String("basso") },
        std::pair { ProcessingTransitionSound::Ping, QLatin1String("ping") },
    };
    static constexpr ProcessingTransitionSound fallback = ProcessingTransitionSound::Hero;
};

/// The name of the system sound for the choice; absent for silence.
std::optional<QString> systemSoundName(ProcessingTransitionSound sound);
