#pragma once

#include "Foundation/Clock.h"
#include "Platform/MicrophonePermission.h"

class PulseConnection;

/// The right to use the microphone as the sound server sees it: there unless the server refused this program.
/// A missing server or microphone is no refusal, but a recording that does not start.
class PulseMicrophonePermission final : public MicrophonePermission {
public:
    /// Both must outlive the permission.
    PulseMicrophonePermission(PulseConnection &connection, Clock &clock);

    /// What is known at this moment, at once. After a refusal every call lets the connection ask again, so
    /// that a later call sees a right that was given meanwhile.
    AuthorizationStatus status() override;

    /// The server asks nobody: the answer is the present status.
    void requestAccess(std::function<void(bool)> answer) override;

private:
    PulseConnection &m_connection;
    Clock &m_clock;
};
