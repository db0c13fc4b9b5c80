#pragma once

#include "Foundation/Error.h"
#include "Platform/AudioPlayer.h"

#include <QStringList>

#include <map>
#include <memory>
#include <vector>

/// Players of sounds in memory, which write down what is done to them.
class FakeAudioPlayers final : public AudioPlayers {
public:
    struct Sound {
        QString path;
        AudioPlayer::DidFinishPlaying didFinishPlaying;
        bool isPlaying = false;
        bool isDestroyed = false;

        /// The file comes to its end.
        void finish(bool successfully = true) {
            isPlaying = false;
            didFinishPlaying(successfully);
        }
    };

    std::unique_ptr<AudioPlayer> open(const FileURL &url) override;

    /// What opening the file at a path throws.
    std::map<QString, SystemError> failures;
    /// Whether sounds can be started.
    bool canPlay = true;
    /// What was done, in order, such as "open /a.wav" and "play /a.wav".
    QStringList calls;
    /// Every sound that was opened, with its present state.
    std::vector<std::shared_ptr<Sound>> sounds;
};
