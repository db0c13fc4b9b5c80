#pragma once

#include <QTcpServer>

/// Holds the port at which a program without settings looks for Ollama, and hangs up on whoever comes: what a
/// test dictates must not reach the machine's own service. It needs the event loop of its thread.
class UsualOllamaPort {
public:
    UsualOllamaPort();

    /// False when something else on this machine listens there.
    bool isHeld() const { return m_isHeld; }
    int visitorCount() const { return m_visitorCount; }

private:
    bool hold(QTcpServer &server, const QHostAddress &address);

    QTcpServer m_ipv4;
    QTcpServer m_ipv6;
    int m_visitorCount = 0;
    bool m_isHeld;
};
