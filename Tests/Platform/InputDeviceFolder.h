#pragma once

#include "Platform/Linux/Evdev/DeviceControl.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <bitset>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include <linux/input.h>

/// A pipe that stands for an input device. Any thread.
class InputDevice {
public:
    /// What it answers about itself.
    struct Description {
        QByteArray name = "AT Translated Set 2 keyboard";
        std::bitset<KEY_CNT> keys;
        bool hasSteadyTimes = true;
    };
    static Description keyboard();

    InputDevice(QByteArray path, Description description);

    /// Sends a press, a release or a repeat (2) of a key, stamped with this or that time.
    void send(unsigned code, int value);
    void send(unsigned code, int value, double time);
    void press(unsigned code) { send(code, 1); }
    void release(unsigned code) { send(code, 0); }
    void type(unsigned code);
    /// Sends any event and changes no key.
    void sendEvent(unsigned type, unsigned code, int value, double time);
    void sendBytes(const QByteArray &bytes);
    static QByteArray bytesOf(unsigned type, unsigned code, int value, double time);

    /// Waits until somebody has read all that was sent.
    bool waitUntilRead() const;

    /// Changes the state of a key without an event.
    void setHeld(unsigned code, bool isHeld);
    /// Says that events were lost.
    void sendDropped(double time) { sendEvent(EV_SYN, SYN_DROPPED, 0, time); }

    /// The device goes, its node stays.
    void hangUp() { m_writer.reset(); }
    /// The node goes, and the device with it.
    void unplug();
    void setMode(unsigned mode);
    /// Shows the node under that path.
    void moveTo(const QByteArray &path);

    /// How often its keys were asked for, which every reader does once when it begins.
    int stateCount() const;
    QByteArray path() const { return m_path; }
    quint64 inode() const { return m_inode; }

    int answer(unsigned long code, quintptr argument);
    /// The kinds of requests that came.
    std::set<unsigned> requests() const;
    static double steadySeconds();

private:
    mutable std::mutex m_mutex;
    QByteArray m_path;
    Description m_description;
    std::bitset<KEY_CNT> m_held;
    FileDescriptor m_writer;
    quint64 m_inode = 0;
    int m_stateCount = 0;
    std::set<unsigned> m_requests;
};

/// A folder that stands for /dev/input.
class InputDeviceFolder {
public:
    InputDeviceFolder();

    QByteArray path() const { return m_path; }
    std::shared_ptr<DeviceControl> control() const;
    /// How every device was opened, as fcntl() tells it.
    std::set<int> openFlags() const;

    InputDevice &plug(const QByteArray &name, InputDevice::Description description = InputDevice::keyboard(),
        unsigned mode = 0644);
    void remove();
    void make();

private:
    class Control;

    QTemporaryDir m_root;
    QByteArray m_path;
    std::shared_ptr<Control> m_control;
    std::vector<std::unique_ptr<InputDevice>> m_devices;
};

/// Takes from the calling thread what the administrator may do beyond the modes of files.
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    unsigned m_user;
};
