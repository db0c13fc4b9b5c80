#pragma once

#include <QString>

#include <memory>

/// A loaded short sound. The destructor stops it. Main thread only.
class SystemSound {
public:
    virtual ~SystemSound() = default;

    /// Whether it loops without a gap until stopped.
    virtual void setLoops(bool loops) = 0;

    /// 0 to 1, linear; also takes effect while playing.
    virtual void setVolume(float volume) = 0;

    /// Plays from the start.
    virtual void play() = 0;

    virtual bool isPlaying() const = 0;

    /// Does nothing when nothing plays.
    virtual void stop() = 0;
};

/// The sounds that the program can play by name.
class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// A new, stopped sound; null if there is none of this name.
    virtual std::unique_ptr<SystemSound> named(const QString &name) = 0;
};
