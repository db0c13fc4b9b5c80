#pragma once

#include "Platform/Linux/Pulse/PulseOutputStream.h"
#include "Platform/SystemSound.h"

/// The program's own sounds, played through the sound server.
class PulseSystemSounds final : public SystemSounds {
public:
    /// `connection` must outlive this, and this every sound.
    explicit PulseSystemSounds(PulseConnection &connection)
        : m_connection(connection) { }

    std::unique_ptr<SystemSound> named(const QString &name) override;

private:
    PulseConnection &m_connection;
    SerialQueue m_queue { QStringLiteral("Tolmi.PulseSystemSounds") };
};
