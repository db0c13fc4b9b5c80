#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"

#include "Platform/Linux/Pulse/PulseConnection.h"

PulseMicrophonePermission::PulseMicrophonePermission(PulseConnection &connection, Clock &clock)
    : m_connection(connection)
    , m_clock(clock) { }

AuthorizationStatus PulseMicrophonePermission::status() {
    if (!m_connection.isAccessDenied())
        return AuthorizationStatus::Authorized;
    m_connection.recheckAccess();
    return AuthorizationStatus::Denied;
}

void PulseMicrophonePermission::requestAccess(std::function<void(bool)> answer) {
    const bool isGranted = status() == AuthorizationStatus::Authorized;
    m_clock.post([answer = std::move(answer), isGranted] { answer(isGranted); });
}
