#include "Platform/Linux/Files/LinuxLocalListeners.h"

#include "Platform/Linux/Files/SystemAccounts.h"

#include <QFile>
#include <QUrl>

#include <algorithm>
#include <cstring>

#include <netinet/in.h>

namespace {
const QString namedLoopback = QStringLiteral("localhost");
constexpr int hexDigitsOfWord = 8;

std::optional<QByteArray> contentsOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

std::optional<std::vector<ListeningSocket>> socketsOfThisMachine() {
    const auto ipv4 = contentsOf(QStringLiteral("/proc/net/tcp"));
    if (!ipv4)
        return std::nullopt;
    std::vector<ListeningSocket> sockets = listeningSockets(*ipv4);
    // Absent if the kernel has no IPv6.
    const auto ipv6 = contentsOf(QStringLiteral("/proc/net/tcp6")).value_or(QByteArray());
    std::ranges::copy(listeningSockets(ipv6), std::back_inserter(sockets));
    return sockets;
}

/// Converts an IPv4-mapped IPv6 address to IPv4.
QHostAddress plain(const QHostAddress &address) {
    bool isIPv4 = false;
    const quint32 ipv4 = address.toIPv4Address(&isIPv4);
    return isIPv4 && !address.isNull() && address != QHostAddress(QHostAddress::AnyIPv6) ? QHostAddress(ipv4)
                                                                                         : address;
}

/// The kernel prints each 32-bit word of an address in host byte order.
std::optional<QHostAddress> addressOf(const QByteArray &hex) {
    Q_IPV6ADDR bytes {};
    const qsizetype size = hex.size() / 2;
    if (hex.size() != hexDigitsOfWord && size != qsizetype(sizeof bytes))
        return std::nullopt;
    for (qsizetype offset = 0; offset < size; offset += sizeof(quint32)) {
        bool isNumber = false;
        const quint32 word = hex.mid(2 * offset, hexDigitsOfWord).toUInt(&isNumber, 16);
        if (!isNumber)
            return std::nullopt;
        std::memcpy(&bytes[int(offset)], &word, sizeof word);
    }
    quint32 ipv4 = 0;
    std::memcpy(&ipv4, &bytes, sizeof ipv4);
    return size == sizeof ipv4 ? QHostAddress(ntohl(ipv4)) : plain(QHostAddress(bytes));
}

std::optional<ListeningSocket> listeningSocket(const QByteArray &line) {
    // Number, local address, remote address, state, queues, timer, retransmissions, user ID.
    const QList<QByteArray> words = line.simplified().split(' ');
    const QList<QByteArray> own = words.value(1).split(':');
    const auto address = addressOf(own.first());
    bool isPort = false;
    bool isAccount = false;
    const quint16 port = own.value(1).toUShort(&isPort, 16);
    const uid_t owner = words.value(7).toUInt(&isAccount);
    const bool isListening = words.value(3) == "0A";
    return address && isPort && isAccount && isListening
        ? std::optional(ListeningSocket { *address, port, owner })
        : std::nullopt;
}

bool isEveryAddress(const QHostAddress &address) {
    return address == QHostAddress(QHostAddress::AnyIPv4) || address == QHostAddress(QHostAddress::AnyIPv6);
}

/// Whether `address` is loopback or unspecified; connections to either stay on this machine.
bool isOwnAddress(const QHostAddress &address) {
    return address.isLoopback() || isEveryAddress(address);
}

/// The local address that `host` denotes (any local address for a host name); absent for other hosts.
std::optional<QHostAddress> ownAddress(QString host) {
    while (host.endsWith(u'.'))
        host.chop(1);
    if (host == namedLoopback || host.endsWith(u'.' + namedLoopback))
        return QHostAddress(QHostAddress::Any);
    const QHostAddress address = plain(QHostAddress(host));
    if (address.isNull() || !isOwnAddress(address))
        return std::nullopt;
    return isEveryAddress(address) ? QHostAddress(QHostAddress::Any) : address;
}

/// Whether the socket may accept connections to `address`. One on the IPv6 wildcard may also accept IPv4.
bool mayAnswerAt(const ListeningSocket &socket, const QHostAddress &address) {
    const QHostAddress own = plain(socket.address);
    if (address == QHostAddress(QHostAddress::Any))
        return isOwnAddress(own);
    return own == address || own == QHostAddress(QHostAddress::AnyIPv6)
        || (own == QHostAddress(QHostAddress::AnyIPv4)
            && address.protocol() == QAbstractSocket::IPv4Protocol);
}
} // namespace

std::vector<ListeningSocket> listeningSockets(const QByteArray &table) {
    std::vector<ListeningSocket> sockets;
    for (const QByteArray &line : table.split('\n')) {
        if (const auto socket = listeningSocket(line))
            sockets.push_back(*socket);
    }
    return sockets;
}

LinuxLocalListeners::LinuxLocalListeners()
    : LinuxLocalListeners(&socketsOfThisMachine) { }

Listener LinuxLocalListeners::listenerAt(const QUrl &url) const {
    const auto address = ownAddress(url.host());
    if (!address)
        return Listener::Elsewhere;
    auto sockets = m_sockets();
    if (!sockets)
        return Listener::Untrusted;
    const int port = url.port(url.scheme() == u"https" ? 443 : 80);
    std::erase_if(*sockets,
        [&](const ListeningSocket &socket) { return socket.port != port || !mayAnswerAt(socket, *address); });
    if (sockets->empty())
        return Listener::Nobody;
    const bool areTrusted = std::ranges::all_of(*sockets, isTrustedAccount, &ListeningSocket::owner);
    return areTrusted ? Listener::Trusted : Listener::Untrusted;
}
