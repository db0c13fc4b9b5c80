#include "Platform/Desktop/LocalSocketInstance.h"

#include "Foundation/Log.h"

#include <QLocalSocket>

#include <memory>

LocalSocketInstance::LocalSocketInstance(const FileURL &folder)
    : m_socketPath(folder.appendingPathComponent(QStringLiteral("tolmi.socket")).path())
    , m_lock(folder.appendingPathComponent(QStringLiteral("tolmi.lock")).path()) {
    // A lock is stale when its owner is gone, however old it is.
    m_lock.setStaleLockTime(0);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
}

bool LocalSocketInstance::claim(std::function<void()> onLaterStart) {
    if (!m_lock.tryLock(0) && m_lock.error() == QLockFile::LockFailedError) {
        tellFirst();
        return false;
    }
    m_onLaterStart = std::move(onLaterStart);
    QLocalServer::removeServer(m_socketPath);
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] { answerLaterStarts(); });
    if (!m_server.listen(m_socketPath))
        logLine(QStringLiteral("Tolmi: later starts will not be noticed: ") + m_server.errorString());
    return true;
}

void LocalSocketInstance::answerLaterStarts() {
    while (const std::unique_ptr<QLocalSocket> visitor { m_server.nextPendingConnection() })
        m_onLaterStart();
}

void LocalSocketInstance::tellFirst() const {
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    // The connection itself is the message.
    socket.waitForConnected(1000);
}
