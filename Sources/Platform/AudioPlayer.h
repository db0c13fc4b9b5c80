#pragma once

#include "Foundation/FileURL.h"

#include <functional>
#include <memory>

/// A sound file that is opened for playing through the default output. Destruction silences it. Main thread
/// only.
class AudioPlayer {
public:
    /// Is told that the file came to its end, or with false that it broke off. Any thread may call it.
    using DidFinishPlaying = std::function<void(bool successfully)>;

    virtual ~AudioPlayer() = default;

    /// Replaces an earlier observer. A pause or a stop is no end.
    virtual void setDidFinishPlaying(DidFinishPlaying observer) = 0;

    /// Gets everything ready, so that the first sound follows its start closely.
    virtual void prepareToPlay() = 0;

    /// Plays from where it is: the start of the file, or the place of the pause. False when it cannot.
    virtual bool play() = 0;

    /// Keeps the place.
    virtual void pause() = 0;

    /// Falls silent. Harmless when nothing plays.
    virtual void stop() = 0;
};

/// Opens sound files for playing.
class AudioPlayers {
public:
    virtual ~AudioPlayers() = default;

    /// A silent player of the file at `url`. Throws SystemError where there is no sound that can be read.
    virtual std::unique_ptr<AudioPlayer> open(const FileURL &url) = 0;
};
