#pragma once

#include <functional>

/// Whether the program may listen.
enum class AuthorizationStatus {
    NotDetermined,
    Restricted,
    Denied,
    Authorized,
};

/// The right to use the microphone.
class MicrophonePermission {
public:
    virtual ~MicrophonePermission() = default;

    /// The present status, without asking the user and without opening a source. Main thread.
    virtual AuthorizationStatus status() = 0;

    /// Asks the user; `answer` gets the outcome on the main thread.
    virtual void requestAccess(std::function<void(bool)> answer) = 0;
};
