#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>

#include <chrono>

/// Who may read a file that is written.
enum class FilePrivacy {
    /// The user alone, whatever was there before.
    Private,
    /// Whoever could read the replaced file; for a new one as the user's other programs do it.
    AsUsual,
};

/// Writes files so that a reader, or the next start after a crash, finds the old content or the new one and
/// nothing between. Any thread may call it.
class AtomicFileWriter {
public:
    virtual ~AtomicFileWriter() = default;

    /// Makes `content` the whole content of the file; the file that a link leads to, not the link. The folder
    /// must exist. Throws SystemError, and what was there is still whole.
    virtual void write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) = 0;

    /// For the end of the program: from `time` on, what is or will be written waits no longer until the disk
    /// has it for good. It stands in its place then, and only a loss of power could still undo it.
    virtual void limitWaiting(std::chrono::milliseconds time) = 0;

    /// Removes what killed processes of this program left behind while they wrote into `folder`. Only for the
    /// program's own folders, and before anything is written there.
    virtual void sweepLeftovers(const FileURL &folder) = 0;
};
