#pragma once

#include "Platform/Availability.h"
#include "Platform/Linux/Evdev/DeviceControl.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Keys/PasteCommand.h"

#include <QByteArray>

#include <memory>
#include <mutex>
#include <vector>

struct input_event;

/// A keyboard of this program's own, to every window system one that was plugged in. It types by the places
/// of the keys, as they are on a keyboard without a layout, and cannot lift what the user holds on another
/// one.
///
/// Window systems need a moment to notice a new keyboard and lose what it types until then, so prepare it at
/// the start of the program and keep it. Any thread.
class UinputKeyboard {
public:
    /// The name by which this program's own taps know it.
    static constexpr const char *deviceName = "Tolmi virtual keyboard";

    explicit UinputKeyboard(QByteArray path = "/dev/uinput",
        std::shared_ptr<DeviceControl> control = std::make_shared<KernelDeviceControl>());
    ~UinputKeyboard();

    /// Makes the keyboard unless it is there; if it cannot be made, why, and what the user can do.
    Availability prepare();
    bool isPrepared() const;

    /// Types the command. False if the keyboard is not prepared or fails; then no key is left down, and the
    /// next prepare() makes a new keyboard.
    bool type(PasteCommand command);
    /// Types a key that means nothing, likewise, so that a modifier that is held is not alone: programs open
    /// menus when one goes down and up alone.
    bool typeMeaninglessKey();

private:
    bool describe(int descriptor) const;
    bool typeTogether(const std::vector<unsigned> &keys);
    bool write(const std::vector<input_event> &events) const;

    QByteArray m_path;
    std::shared_ptr<DeviceControl> m_control;
    mutable std::mutex m_mutex;
    FileDescriptor m_descriptor;
};
