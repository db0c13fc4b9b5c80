#pragma once

#include "Foundation/FileURL.h"
#include "Platform/SingleInstance.h"

#include <QLocalServer>
#include <QLockFile>

/// A single instance that is known by a lock and a socket in the folder of the user's data. A temporary
/// folder will not do: where another user has spoilt it, each start gets one of its own.
class LocalSocketInstance final : public SingleInstance {
public:
    /// `dataFolder` is the same for every start. The socket goes to `temporaryFolder`, which others cannot
    /// enter, where its path would be too long.
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
