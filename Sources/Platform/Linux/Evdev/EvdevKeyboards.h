#pragma once

#include "Platform/Linux/Evdev/EvdevKeyboard.h"

#include <QByteArrayList>

#include <map>

struct inotify_event;
struct pollfd;

/// All keyboards of a folder of input devices, those included that are plugged in or may be read only later.
///
/// The folder is watched by inotify: a node appears, becomes readable and goes away there, and no further
/// library or service is needed. One thread at a time.
class EvdevKeyboards {
public:
    /// `folder` may be missing and come later.
    EvdevKeyboards(QByteArray folder, std::shared_ptr<DeviceControl> control);

    /// The names of the devices in a folder.
    static QByteArrayList deviceNames(const QByteArray &folder);

    /// Whether the folder can be watched.
    bool isValid() const { return m_watch.isValid(); }
    /// Opens the keyboards that are there.
    void openAll();
    /// What poll() has to wait for before read() finds something.
    std::vector<pollfd> awaited() const;

    /// Appends what has been pressed and released on all of them since the last time, one keyboard after the
    /// other. Keys of a keyboard that is gone, or that may not be read any more, are released.
    void read(std::vector<KeyChange> &changes, double now);

    /// On how many keyboards a key is down.
    int heldCount(unsigned code) const;
    /// Whether there are other keyboards than at the last call.
    bool takeHasChanged() { return std::exchange(m_hasChanged, false); }

private:
    void watchFolder();
    void readWatch(std::vector<KeyChange> &changes, double now);
    void folderChanged(const inotify_event &event, std::vector<KeyChange> &changes, double now);
    void refreshAll(std::vector<KeyChange> &changes, double now);
    void refresh(const QByteArray &name, std::vector<KeyChange> &changes, double now);
    void drop(const QByteArray &name, std::vector<KeyChange> &changes, double now);

    QByteArray m_folder;
    std::shared_ptr<DeviceControl> m_control;
    FileDescriptor m_watch;
    int m_folderWatch = -1;
    /// By the names of their nodes.
    std::map<QByteArray, std::shared_ptr<EvdevKeyboard>> m_keyboards;
    bool m_hasChanged = false;
};
