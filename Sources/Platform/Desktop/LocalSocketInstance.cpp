#include "Platform/Desktop/LocalSocketInstance.h"

#include "Foundation/Log.h"

#include <QFile>
#include <QLocalSocket>
#include <QSysInfo>

#include <memory>

namespace {
/// Bytes; the longest socket path that every system accepts.
constexpr qsizetype longestSocketPath = 103;

QString socketPath(const FileURL &folder, const FileURL &otherFolder) {
    const QString name = QStringLiteral("tolmi.socket");
    const QString path = folder.appendingPathComponent(name).path();
    return QFile::encodeName(path).size() <= longestSocketPath
        ? path
        : otherFolder.appendingPathComponent(name).path();
}

/// Includes the host name, because machines may share the folder and cannot check each other's processes.
QString lockName() {
    return QStringLiteral("tolmi-%1.lock").arg(QSysInfo::machineHostName());
}
} // namespace

LocalSocketInstance::LocalSocketInstance(const FileURL &dataFolder, const FileURL &temporaryFolder)
    : m_socketPath(socketPath(dataFolder, temporaryFolder))
    , m_lock(dataFolder.appendingPathComponent(lockName()).path()) {
    // A lock is stale only when its owner has exited, whatever its age.
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
