#pragma once

#include "Foundation/FileURL.h"
#include "Platform/SingleInstance.h"

#include <QLocalServer>
#include <QLockFile>

/// Single instance by a lock and a socket in the user's data folder. A temporary folder would not do: if
/// another user has tampered with it, each start gets a fresh one.
class LocalSocketInstance final : public SingleInstance {
public:
    /// `dataFolder` is the same for every start. If the socket's path there is too long, it is created in
    /// `temporaryFolder`, which must be private.
    LocalSocketInstance(const FileURL &dataFolder, const FileURL &temporaryFolder);

    bool claim(std::function<void()> onLaterStart) override;

private:
    void answerLaterStarts();
    void tellFirst() const;

    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer m_server;
    std::function<void()> m_onLaterStart;
};
