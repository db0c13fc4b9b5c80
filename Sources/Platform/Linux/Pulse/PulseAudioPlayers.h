#pragma once

#include "Platform/AudioPlayer.h"
#include "Platform/Linux/Pulse/PulseOutputStream.h"

/// Plays files through the sound server.
class PulseAudioPlayers final : public AudioPlayers {
public:
    /// `connection` must outlive this, and this every player.
    explicit PulseAudioPlayers(PulseConnection &connection)
        : m_connection(connection) { }

    std::unique_ptr<AudioPlayer> open(const FileURL &url) override;

private:
    PulseConnection &m_connection;
    SerialQueue m_queue { QStringLiteral("Tolmi.PulseAudioPlayers") };
};
