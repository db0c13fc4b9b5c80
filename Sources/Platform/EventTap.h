#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// What an event tap reports.
enum class TapEventType {
    /// A modifier key was pressed or released.
    FlagsChanged,
    /// Another key was pressed soon after the dictation key, which is still down: together they type a letter
    /// or trigger a shortcut, so the press was not meant to dictate. At most once per press.
    ChordBegan,
    /// The system disabled the tap because it was too slow.
    TapDisabledByTimeout,
    /// The system disabled the tap for secure input.
    TapDisabledByUserInput,
    Other,
};

/// One event of an event tap, with Macintosh key codes on every system.
struct TapEvent {
    TapEventType type = TapEventType::Other;
    /// 61 is the right Option (Alt) key, which DictationKey names, 58 the left one.
    qint64 keyCode = 0;
    /// Bit 0x80000 is set while either is down.
    quint64 flags = 0;

    friend bool operator==(const TapEvent &, const TapEvent &) = default;
};

/// Observes the keyboard without intercepting events.
class EventTap {
public:
    virtual ~EventTap() = default;

    /// Delivers events on the calling thread until invalidate(). Returns at once if already invalidated.
    virtual void run() = 0;

    /// Enables or disables delivery. Any thread.
    virtual void setEnabled(bool enabled) = 0;

    /// Makes the current or any later run() return. Any thread.
    virtual void invalidate() = 0;
};

/// Creates event taps.
class EventTapFactory {
public:
    virtual ~EventTapFactory() = default;

    /// A tap that calls `handler` on the thread that runs it; null if the system refuses.
    virtual std::shared_ptr<EventTap> create(std::function<void(const TapEvent &)> handler) = 0;
};
