#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>

/// A sound server of a test's own, with a virtual microphone: what is played into the sink "micfeed" comes
/// out of the source "mic". Programs that this one starts, and libraries in it, find it.
class SoundServer {
public:
    SoundServer();
    ~SoundServer();

    /// Waits until the server answers.
    void start();
    /// Ends the server without letting it say goodbye.
    void kill();
    /// The server stays, but does nothing.
    void freeze();
    void thaw();

    void addMicrophone();
    void removeMicrophone();

    /// Tells the server something through pactl; what it answers.
    QByteArray tell(const std::string &command);

private:
    QTemporaryDir m_folder;
    /// 0 while there is none.
    pid_t m_process = 0;
};

/// Plays 32-bit floats of `next`, mono at 48 kHz, into the virtual microphone until it is destroyed.
class Speech {
public:
    explicit Speech(std::function<float()> next);
    ~Speech();

private:
    struct Player;
    std::unique_ptr<Player> m_player;
};

/// Waits until `condition` holds; whether it did within ten seconds.
bool waitUntil(const std::function<bool()> &condition);
