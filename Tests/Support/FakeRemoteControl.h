#pragma once

#include "Platform/RemoteControl.h"

#include <QStringList>

/// Other programs, played by the test.
class FakeRemoteControl final : public RemoteControl {
public:
    /// What serve() answers.
    Availability availability;
    /// Those that are served; null before.
    RemoteCommands *commands = nullptr;
    /// The state and the last error at each announcement, "STATE ERROR".
    QStringList announcements;

    Availability serve(RemoteCommands &served) override {
        commands = &served;
        return availability;
    }
    void announce() override {
        const RemoteStatus status = commands->status();
        announcements.append((status.state + u' ' + status.lastError).trimmed());
    }
};
