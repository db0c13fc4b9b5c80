#pragma once

#include "Foundation/Clock.h"
#include "Platform/MicrophonePermission.h"

class PulseConnection;

/// Microphone permission according to the sound server: granted unless the server denied access. A missing
/// server or microphone is not a denial but makes the recording fail to start.
class PulseMicrophonePermission final : public MicrophonePermission {
public:
    /// Both must outlive the permission.
    PulseMicrophonePermission(PulseConnection &connection, Clock &clock);

    /// The latest known status, without waiting. After a denial every call makes the connection ask again, so
    /// that a later call notices a permission granted since.
    AuthorizationStatus status() override;

    /// The server cannot prompt the user, so the answer is the current status.
    void requestAccess(std::function<void(bool)> answer) override;

private:
    PulseConnection &m_connection;
    Clock &m_clock;
};
