#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>

#include <chrono>

/// Who may read a written file.
enum class FilePrivacy {
    /// Only the user, even if a replaced file was readable by others.
    Private,
    /// A replaced file keeps its permissions; a new one gets the user's defaults.
    AsUsual,
};

/// Writes files so that a reader, or the next start after a crash, finds either the old or the new content.
/// Any thread may call it.
class AtomicFileWriter {
public:
    virtual ~AtomicFileWriter() = default;

    /// Replaces the content of the file; follows symbolic links. The folder must exist. Throws SystemError
    /// and then leaves the old content intact.
    virtual void write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) = 0;

    /// For quitting: after `time`, present and later writes no longer wait until the disk has confirmed them.
    /// The file is in place then, and only a power failure could still undo it.
    virtual void limitWaiting(std::chrono::milliseconds time) = 0;

    /// Removes temporary files that killed processes of this program left in `folder`. Only for the program's
    /// own folders, and before anything is written there.
    virtual void sweepLeftovers(const FileURL &folder) = 0;
};
