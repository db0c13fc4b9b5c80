#pragma once

#include "Foundation/FileURL.h"
#include "Platform/SingleInstance.h"

#include <QLocalServer>
#include <QLockFile>

/// A single instance that is known by a lock and a socket in a private folder.
class LocalSocketInstance final : public SingleInstance {
public:
    /// `folder` belongs to the user alone and lasts as long as the session.
    explicit LocalSocketInstance(const FileURL &folder);

    bool claim(std::function<void()> onLaterStart) override;

private:
    void answerLaterStarts();
    void tellFirst() const;

    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer m_server;
    std::function<void()> m_onLaterStart;
};
