#pragma once

#include "Platform/AtomicFileWriter.h"
#include "Platform/Linux/Files/DiskWait.h"

#include <optional>

#include <sys/types.h>

/// Writes through a temporary file in the target's folder.
///
/// The temporary file has no name until it is complete, so that a killed process leaves nothing behind. On
/// file systems without unnamed files (FAT, some FUSE ones) it has a name.
class LinuxAtomicFileWriter final : public AtomicFileWriter {
public:
    enum class TemporaryFiles {
        UnnamedWherePossible,
        /// As on file systems without unnamed files.
        Named,
    };

    explicit LinuxAtomicFileWriter(TemporaryFiles temporaryFiles = TemporaryFiles::UnnamedWherePossible)
        : m_temporaryFiles(temporaryFiles) { }

    /// `usersMask` is the umask for new files that are not private, for a process whose own umask is
    /// stricter.
    explicit LinuxAtomicFileWriter(mode_t usersMask)
        : m_temporaryFiles(TemporaryFiles::UnnamedWherePossible)
        , m_usersMask(usersMask) { }

    void write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) override;
    void limitWaiting(std::chrono::milliseconds time) override { m_diskWait.limit(time); }
    void sweepLeftovers(const FileURL &folder) override;

private:
    const TemporaryFiles m_temporaryFiles;
    const std::optional<mode_t> m_usersMask;
    DiskWait m_diskWait;
};
