#pragma once

#include "Foundation/FileURL.h"

#include <functional>
#include <memory>

/// A sound file opened for playback through the default output. The destructor stops it. Main thread only.
class AudioPlayer {
public:
    /// Called when playback has reached the end, or with false when it failed. May run on any thread.
    using DidFinishPlaying = std::function<void(bool successfully)>;

    virtual ~AudioPlayer() = default;

    /// Replaces an earlier observer. Not called for a pause or a stop.
    virtual void setDidFinishPlaying(DidFinishPlaying observer) = 0;

    /// Prepares for playback, so that play() starts without delay.
    virtual void prepareToPlay() = 0;

    /// Plays from the current position: the start of the file, or where it was paused. False on failure.
    virtual bool play() = 0;

    /// Keeps the position.
    virtual void pause() = 0;

    /// Stops playback. Does nothing when nothing plays.
    virtual void stop() = 0;
};

/// Opens sound files for playback.
class AudioPlayers {
public:
    virtual ~AudioPlayers() = default;

    /// A stopped player for the file at `url`. Throws SystemError if it is not a readable sound file.
    virtual std::unique_ptr<AudioPlayer> open(const FileURL &url) = 0;
};
