#pragma once

#include "Platform/AudioPlayer.h"

/// Players over the toolkit's media player.
class QtAudioPlayers final : public AudioPlayers {
public:
    /// To be called before anything of the sound system is used: chooses the media library that plays files
    /// of 32-bit floats, unless the user has chosen one.
    static void chooseLibrary();

    std::unique_ptr<AudioPlayer> open(const FileURL &url) override;
};
