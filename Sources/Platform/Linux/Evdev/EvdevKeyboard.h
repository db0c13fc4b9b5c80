#pragma once

#include "Platform/Linux/Evdev/DeviceControl.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <QByteArray>

#include <bitset>
#include <memory>
#include <optional>
#include <vector>

struct input_event;

/// A key that was pressed or released on one keyboard.
struct KeyChange {
    /// Seconds of the steady clock.
    double time = 0;
    /// The kernel's code, which names the place of the key whatever the layout.
    unsigned code = 0;
    bool isDown = false;

    friend bool operator==(const KeyChange &, const KeyChange &) = default;
};

/// A keyboard under /dev/input. It only listens: nothing is grabbed, and every other program sees its keys
/// too.
class EvdevKeyboard {
public:
    /// The codes of keys; higher ones are buttons and remote controls.
    static constexpr size_t keyCount = 0x100;
    using Keys = std::bitset<keyCount>;

    /// What could be opened.
    enum class Kind {
        Keyboard,
        /// Another input device, or the keyboard with which this program types.
        Other,
        /// Not to be opened by this user.
        Refused,
        /// There is none, or not any more.
        Missing,
    };
    struct Opened {
        Kind kind = Kind::Missing;
        std::shared_ptr<EvdevKeyboard> keyboard;
    };

    /// Opens a node. Only a device that has a right Alt key and letters is a keyboard.
    static Opened open(const QByteArray &path, std::shared_ptr<DeviceControl> control);

    int descriptor() const { return m_descriptor.get(); }
    /// What is down, as far as read() or the start has told.
    const Keys &heldKeys() const { return m_heldKeys; }
    /// Whether both are opened from the same node.
    bool isSameNode(const EvdevKeyboard &other) const;

    /// Appends what has been pressed and released since the last time, repeats left out. False if the device
    /// is gone: then all keys are up.
    bool read(std::vector<KeyChange> &changes, double now);

    /// Lets go of all keys, as for a device that is gone.
    void releaseAll(std::vector<KeyChange> &changes, double now);

private:
    EvdevKeyboard(FileDescriptor descriptor, std::shared_ptr<DeviceControl> control);

    bool isKeyboard() const;
    bool isOurOwn() const;
    void countTimeSteadily();
    std::optional<Keys> readHeldKeys() const;
    bool parse(std::vector<KeyChange> &changes, double now);
    void keyEvent(const input_event &event, double time, std::vector<KeyChange> &changes);
    bool catchUp(std::vector<KeyChange> &changes, double time);
    void becomes(unsigned code, bool isDown, double time, std::vector<KeyChange> &changes);

    FileDescriptor m_descriptor;
    std::shared_ptr<DeviceControl> m_control;
    Keys m_heldKeys;
    bool m_hasSteadyTimes = false;
    /// The latest time of a change; none goes back behind it.
    double m_time;
    /// What has come of an event that is not complete yet.
    QByteArray m_bytes;
};
