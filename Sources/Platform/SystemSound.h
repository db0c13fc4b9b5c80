#pragma once

#include <QString>

#include <memory>

/// A short sound that was loaded. Destruction silences it. Main thread only.
class SystemSound {
public:
    virtual ~SystemSound() = default;

    /// Whether it starts again at its end, without a gap, until it is stopped.
    virtual void setLoops(bool loops) = 0;

    /// 0 to 1, linear; takes effect while it plays too.
    virtual void setVolume(float volume) = 0;

    /// Plays from the start.
    virtual void play() = 0;

    virtual bool isPlaying() const = 0;

    /// Harmless when nothing plays.
    virtual void stop() = 0;
};

/// The sounds that the program can play by name.
class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// A new, silent sound; null where there is none of this name.
    virtual std::unique_ptr<SystemSound> named(const QString &name) = 0;
};
