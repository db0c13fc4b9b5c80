#pragma once

#include <QTcpServer>
#include <QUrl>

#include <functional>
#include <vector>

class QTcpSocket;

/// An HTTP server on the loopback interface that sends exactly the bytes it is told, at the moments it is
/// told, HTTP or not. It needs the event loop of its thread.
class MisbehavingServer {
public:
    /// One thing that is done once a request is there whole.
    using Step = std::function<void(QTcpSocket &)>;

    MisbehavingServer();
    ~MisbehavingServer();

    /// The server's address, without a path.
    QUrl url() const;

    /// From now on nothing listens at the address.
    void refuseConnections();

    /// Undoes refuseConnections().
    void acceptConnections();

    /// Sends `bytes` and keeps the connection open.
    static Step send(QByteArray bytes);
    /// Sends `size` blanks, only as fast as they are taken, and ends the connection in order.
    Step stream(qint64 size);
    /// Ends the connection in order.
    static Step close();
    /// Ends the connection by a reset.
    static Step reset();

    /// A well-formed answer with the right length.
    static QByteArray answer(int status, const QByteArray &body, const QByteArray &headers = {});

    /// Sends `bytes` on the latest connection.
    void sendNow(const QByteArray &bytes);

    /// What is done for the first request, the second, and so on; the last stands for all further ones too.
    std::vector<std::vector<Step>> script;

    /// The head and body of every request, as they came.
    std::vector<QByteArray> requests;

    /// How many bytes of streams were handed to the system.
    qint64 streamedByteCount = 0;

private:
    void accept();
    void reply(QTcpSocket &socket, const QByteArray &request);

    QTcpServer m_server;
    quint16 m_port = 0;
    QTcpSocket *m_latest = nullptr;
};
