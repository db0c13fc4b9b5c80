#pragma once

#include "Platform/SystemSound.h"

/// The program's own sounds, played through the default output. Nothing of the sound system is loaded before
/// the first sound is asked for.
class QtSystemSounds final : public SystemSounds {
public:
    std::unique_ptr<SystemSound> named(const QString &name) override;
};
