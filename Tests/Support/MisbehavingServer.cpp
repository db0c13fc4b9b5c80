#include "Support/MisbehavingServer.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

#include <sys/socket.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {
bool isWhole(const QByteArray &request) {
    const qsizetype headEnd = request.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return false;
    const QByteArray lengthName = "content-length:";
    const QByteArray head = request.left(headEnd).toLower() + "\r\n";
    const qsizetype name = head.indexOf(lengthName);
    if (name < 0)
        return true;
    const qsizetype start = name + lengthName.size();
    const qsizetype length = head.mid(start, head.indexOf("\r\n", start) - start).trimmed().toLongLong();
    return request.size() >= headEnd + 4 + length;
}
} // namespace

MisbehavingServer::MisbehavingServer() {
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { accept(); });
    acceptConnections();
    m_port = m_server.serverPort();
}

MisbehavingServer::~MisbehavingServer() {
    for (auto *socket : m_server.findChildren<QTcpSocket *>()) {
        socket->disconnect();
        socket->abort();
    }
}

QUrl MisbehavingServer::url() const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port));
}

void MisbehavingServer::refuseConnections() {
    m_server.close();
}

void MisbehavingServer::acceptConnections() {
    // The first time, the system gives it a port.
    if (!m_server.listen(QHostAddress::LocalHost, m_port))
        ADD_FAILURE() << "the server cannot listen";
}

MisbehavingServer::Step MisbehavingServer::send(QByteArray bytes) {
    return [bytes](QTcpSocket &socket) { socket.write(bytes); };
}

MisbehavingServer::Step MisbehavingServer::stream(qint64 size) {
    return [this, size](QTcpSocket &socket) {
        const auto left = std::make_shared<qint64>(size);
        // One buffer for all pieces: what the server allocates would count among the memory of the client.
        const QByteArray piece(256 * 1024, ' ');
        const auto sendMore = [this, left, piece, &socket] {
            if (socket.bytesToWrite() > 0)
                return;
            if (*left == 0) {
                socket.disconnectFromHost();
                return;
            }
            const qint64 count = std::min<qint64>(*left, piece.size());
            socket.write(count == piece.size() ? piece : piece.first(count));
            *left -= count;
            streamedByteCount += count;
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, sendMore);
        sendMore();
    };
}

MisbehavingServer::Step MisbehavingServer::close() {
    return [](QTcpSocket &socket) { socket.disconnectFromHost(); };
}

MisbehavingServer::Step MisbehavingServer::reset() {
    return [](QTcpSocket &socket) {
        socket.flush();
        const linger atOnce { .l_onoff = 1, .l_linger = 0 };
        setsockopt(socket.socketDescriptor(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        socket.abort();
    };
}

QByteArray MisbehavingServer::answer(int status, const QByteArray &body, const QByteArray &headers) {
    return "HTTP/1.1 " + QByteArray::number(status) + " Whatever\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n" + headers + "\r\n" + body;
}

void MisbehavingServer::sendNow(const QByteArray &bytes) {
    ASSERT_NE(m_latest, nullptr);
    m_latest->write(bytes);
}

void MisbehavingServer::accept() {
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        m_latest = socket;
        const auto request = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, request] {
            *request += socket->readAll();
            if (isWhole(*request))
                reply(*socket, std::exchange(*request, {}));
        });
    }
}

void MisbehavingServer::reply(QTcpSocket &socket, const QByteArray &request) {
    requests.push_back(request);
    if (script.empty()) {
        ADD_FAILURE() << "an HTTP request without a script";
        return;
    }
    for (const Step &step : script[std::min(requests.size(), script.size()) - 1])
        step(socket);
}
