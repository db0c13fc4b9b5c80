#pragma once

#include <functional>

/// Whether the program may use the microphone.
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

    /// The current status, without prompting the user or opening a source. Main thread.
    virtual AuthorizationStatus status() = 0;

    /// Prompts the user; `answer` is called with the outcome on the main thread.
    virtual void requestAccess(std::function<void(bool)> answer) = 0;
};
