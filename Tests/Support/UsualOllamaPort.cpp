#include "Support/UsualOllamaPort.h"

#include <QTcpSocket>

namespace {
constexpr quint16 usualPort = 11434;
} // namespace

UsualOllamaPort::UsualOllamaPort()
    : m_isHeld(hold(m_ipv4, QHostAddress(QHostAddress::LocalHost))) {
    const bool isHeldForIPv6 = hold(m_ipv6, QHostAddress(QHostAddress::LocalHostIPv6));
    // A machine without IPv6 has nobody there either.
    m_isHeld = m_isHeld && (isHeldForIPv6 || m_ipv6.serverError() != QAbstractSocket::AddressInUseError);
}

bool UsualOllamaPort::hold(QTcpServer &server, const QHostAddress &address) {
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this, &server] {
        while (QTcpSocket *visitor = server.nextPendingConnection()) {
            ++m_visitorCount;
            QObject::connect(visitor, &QTcpSocket::disconnected, visitor, &QObject::deleteLater);
            visitor->disconnectFromHost();
        }
    });
    return server.listen(address, usualPort);
}
