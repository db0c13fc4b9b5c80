#include "TolmiApp/Settings/ProcessingTransitionSound.h"

std::optional<QString> systemSoundName(ProcessingTransitionSound sound) {
    if (sound == ProcessingTransitionSound::None)
        return std::nullopt;
    QString name = rawValue(sound);
    name[0] = name[0].toUpper();
    return name;
}
