#pragma once

#include "Platform/Availability.h"

#include <QtGlobal>

#include <functional>
#include <memory>

/// What an event tap reports.
enum class TapEventType {
    /// A modifier key went down or came up.
    FlagsChanged,
    /// The system switched the tap off because it was too slow.
    TapDisabledByTimeout,
    /// The system switched the tap off for secure input.
    TapDisabledByUserInput,
    Other,
};

/// One event of an event tap, in the codes of a Macintosh keyboard whatever the system.
struct TapEvent {
    TapEventType type = TapEventType::Other;
    /// 61 is the right Option (Alt) key, 58 the left one.
    qint64 keyCode = 0;
    /// Bit 0x80000 is set while any of the two is down.
    quint64 flags = 0;
};

/// A running watch on the keyboard that only listens.
class EventTap {
public:
    virtual ~EventTap() = default;

    /// Delivers events on the calling thread until invalidate(). Returns at once if it was invalidated
    /// before.
    virtual void run() = 0;

    /// Turns delivery on or off. Any thread.
    virtual void setEnabled(bool enabled) = 0;

    /// Makes run() return, now or whenever it is called. Any thread.
    virtual void invalidate() = 0;
};

/// Makes event taps.
class EventTapFactory {
public:
    virtual ~EventTapFactory() = default;

    /// A tap that calls `handler` on the thread that runs it; nothing when the system refuses.
    virtual std::shared_ptr<EventTap> create(std::function<void(const TapEvent &)> handler) = 0;
};

/// The right to watch keys and to post them.
class AccessibilityRight {
public:
    virtual ~AccessibilityRight() = default;

    /// Whether the right is there now; if not, why.
    virtual Availability state() = 0;

    /// Lets the system ask the user, or tells the user how to grant the right.
    virtual void prompt() = 0;

    /// Opens the place where the user grants the right, if there is one.
    virtual void openSettings() = 0;
};

/// Posts the paste command to whatever has the focus.
class PasteKeystroke {
public:
    virtual ~PasteKeystroke() = default;

    /// Whether the user holds a modifier key that would change the meaning of the command.
    virtual bool isModifierHeld() = 0;

    /// Posts key-down and key-up of the paste command, one right after the other, with every other modifier
    /// released first. A command that cannot be posted is dropped.
    virtual void post() = 0;
};
