#pragma once

#include "Platform/Availability.h"
#include "Platform/OperationMethod.h"

#include <optional>
#include <vector>

/// What another program of the user can have this one do.
enum class RemoteCommand {
    /// Holds the dictation key down until the program lets go of it or ends.
    Press,
    Release,
    /// The two ends of a key binding of the desktop, which has a program of its own run for each.
    KeyDown,
    KeyUp,
    /// Presses the key and leaves it down; does nothing while it is.
    Start,
    /// Ends the recording, whoever began it, unless a key or a program is held to it.
    Stop,
    /// One of the two, by whether something is being recorded.
    Toggle,
    ShowStudio,
    ShowSettings,
    Quit,
};

/// Why a command was not carried out.
enum class RemoteRefusal {
    /// The session is locked.
    Locked,
    /// The last dictation is still being processed.
    Busy,
    /// Somebody else holds the key.
    HeldElsewhere,
};

/// A command and who gives it.
struct RemoteRequest {
    RemoteCommand command {};
    /// Names the program until it ends.
    QString caller;
    /// For the two ends of a key binding: when the binding ran, in microseconds since the machine started; 0
    /// if that is not known.
    quint64 time = 0;
};

/// What the program tells about itself; nothing of what was dictated.
struct RemoteStatus {
    /// Name of the dictation's state in lower case.
    QString state;
    /// Level of the microphone, 0 to 1; 0 unless it is recorded.
    double level = 0;
    /// Why the last dictation failed; empty if it did not.
    QString lastError;
    QString version;
};

/// Who carries the commands out. Main thread only; nothing waits.
class RemoteCommands {
public:
    virtual ~RemoteCommands() = default;

    /// Why the command is refused; absent if it is not.
    virtual std::optional<RemoteRefusal> run(const RemoteRequest &request) = 0;
    /// A program that has pressed the key has ended.
    virtual void callerLeft(const QString &caller) = 0;
    virtual RemoteStatus status() const = 0;
    /// How each operation is done here, in the order in which they are shown.
    virtual std::vector<OperationMethod> methods() const = 0;
};

/// Lets other programs of the user drive this one. Main thread only.
class RemoteControl {
public:
    virtual ~RemoteControl() = default;

    /// Begins to serve `commands`, which live as long as the event loop runs; never waits. Unavailable where
    /// no program can reach this one.
    virtual Availability serve(RemoteCommands &commands) = 0;
    /// Tells those who follow the status what has changed in it; the level is only told when asked for.
    virtual void announce() = 0;
};
