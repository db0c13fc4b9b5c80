#pragma once

#include "Platform/LocalListeners.h"

#include <QByteArray>
#include <QHostAddress>

#include <functional>
#include <optional>
#include <vector>

#include <sys/types.h>

/// A socket that waits for connections.
struct ListeningSocket {
    QHostAddress address;
    quint16 port = 0;
    /// The account that opened it.
    uid_t owner = 0;
};

/// The listening sockets of a table as the kernel writes it in /proc/net/tcp and tcp6. A line that is not
/// understood is left out.
std::vector<ListeningSocket> listeningSockets(const QByteArray &table);

/// Asks the kernel's tables of sockets.
class LinuxLocalListeners final : public LocalListeners {
public:
    /// All listening sockets of this machine; absent when the kernel does not tell.
    using Sockets = std::function<std::optional<std::vector<ListeningSocket>>()>;

    /// With the tables of this machine.
    LinuxLocalListeners();
    explicit LinuxLocalListeners(Sockets sockets)
        : m_sockets(std::move(sockets)) { }

    Listener listenerAt(const QUrl &url) const override;

private:
    Sockets m_sockets;
};
