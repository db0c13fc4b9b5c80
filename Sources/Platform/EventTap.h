#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// What an event tap reports.
enum class TapEventType {
    /// A modifier key went down or came up.
    FlagsChanged,
    /// Another key went down soon after the dictation key, which is still down: the two type a letter or give
    /// a
    /// command, so the press was not meant for a dictation. Comes once for a press at most.
    ChordBegan,
    /// The system switched the tap off because it was too slow.
    TapDisabledByTimeout,
    /// The system switched the tap off for secure input.
    TapDisabledByUserInput,
    Other,
};

/// One event of an event tap, in the codes of a Macintosh keyboard whatever the system.
struct TapEvent {
    TapEventType type = TapEventType::Other;
    /// 61 is the right Option (Alt) key, which DictationKey names, 58 the left one.
    qint64 keyCode = 0;
    /// Bit 0x80000 is set while any of the two is down.
    quint64 flags = 0;

    friend bool operator==(const TapEvent &, const TapEvent &) = default;
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
