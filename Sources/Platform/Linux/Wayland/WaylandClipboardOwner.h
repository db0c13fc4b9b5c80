#pragma once

#include "Platform/Linux/Clipboard/ClipboardContent.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Wayland/WaylandConnection.h"

#include <chrono>

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_source_v1;

/// Gives what this program has on a selection to the programs that ask for it.
class WaylandClipboardOwner {
public:
    enum class Selection {
        Clipboard,
        Primary,
    };
    /// The compositor's side. All of it outlives the owner.
    struct Device {
        WaylandConnection &connection;
        zwlr_data_control_manager_v1 *manager;
        zwlr_data_control_device_v1 *device;
    };
    /// Told of each type that was given out.
    using OnRead = std::function<void(const QString &type)>;

    WaylandClipboardOwner(Device device, Selection selection, OnRead onRead);
    ~WaylandClipboardOwner();

    /// Takes the selection with `content` and says whether the compositor has it so. Programs that were still
    /// reading the former content get all of it.
    bool take(ClipboardContent content, WaylandConnection::Instant until);
    bool owns() const { return m_source != nullptr; }
    const ClipboardContent &content() const { return m_content; }

    /// What to wait for while data is going out.
    std::vector<pollfd> descriptors() const;
    /// Sends on what can be sent.
    void continueTransfers();

private:
    /// Data that goes out as fast as its reader takes it.
    struct Transfer {
        FileDescriptor pipe;
        QByteArray bytes;
        qsizetype sent = 0;
        WaylandConnection::Instant lastStep;
    };

    void send(const char *type, int pipe);
    static bool goesOn(Transfer &transfer);
    void select(zwlr_data_control_source_v1 *source);
    void release();

    Device m_device;
    Selection m_selection;
    OnRead m_onRead;
    ClipboardContent m_content;
    zwlr_data_control_source_v1 *m_source = nullptr;
    std::vector<Transfer> m_transfers;
};
