#pragma once

#include "Platform/AtomicFileWriter.h"
#include "Platform/Linux/Files/DiskWait.h"

#include <optional>

#include <sys/types.h>

/// Writes through a temporary file in the target's folder.
///
/// The temporary file has no name until it is complete, so that nothing is left of a killed process. File
/// systems that know no such files (FAT, some in user space) get a named one.
class LinuxAtomicFileWriter final : public AtomicFileWriter {
public:
    enum class TemporaryFiles {
        UnnamedWherePossible,
        /// As on a file system without unnamed files.
        Named,
    };

    explicit LinuxAtomicFileWriter(TemporaryFiles temporaryFiles = TemporaryFiles::UnnamedWherePossible)
        : m_temporaryFiles(temporaryFiles) { }

    /// `usersMask` is the umask that new files which are not private follow, for a program whose own is
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
