#pragma once

#include "Platform/LocalListeners.h"

#include <QByteArray>
#include <QHostAddress>

#include <functional>
#include <optional>
#include <vector>

#include <sys/types.h>

/// A listening socket.
struct ListeningSocket {
    QHostAddress address;
    quint16 port = 0;
    /// The user ID of the process that opened it.
    uid_t owner = 0;
};

/// Parses the listening sockets of /proc/net/tcp or tcp6. Skips lines that cannot be parsed.
std::vector<ListeningSocket> listeningSockets(const QByteArray &table);

/// Reads the kernel's socket tables.
class LinuxLocalListeners final : public LocalListeners {
public:
    /// All listening sockets of this machine; absent if the tables cannot be read.
    using Sockets = std::function<std::optional<std::vector<ListeningSocket>>()>;

    /// Uses the tables of this machine.
    LinuxLocalListeners();
    explicit LinuxLocalListeners(Sockets sockets)
        : m_sockets(std::move(sockets)) { }

    Listener listenerAt(const QUrl &url) const override;

private:
    Sockets m_sockets;
};
