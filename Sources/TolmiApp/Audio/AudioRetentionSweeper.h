#pragma once

#include "Foundation/Clock.h"
#include "Platform/FileListing.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

/// Limits the age and total size of the recordings.
///
/// It knows only the folder: every visible regular file counts, even recordings of pinned entries or one that
/// is being written.
class AudioRetentionSweeper final : public RetentionSweeper {
public:
    /// The arguments must outlive the sweeper.
    AudioRetentionSweeper(const FileManager &fileManager, FileListing &fileListing, const Clock &clock);

    /// Removes the files older than `retentionHours`, then the oldest until the rest is no larger than
    /// `maxSizeMB`; both are at least 1. A missing folder counts as empty; files that cannot be removed are
    /// skipped. Throws if the folder cannot be listed.
    AudioRetentionSweepResult sweep(
        const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB) override;

private:
    struct CachedFile {
        FileURL url;
        qint64 sizeBytes;
        Date modifiedAt;
    };

    std::vector<CachedFile> loadFiles(const FileURL &directoryURL) const;
    bool remove(const CachedFile &file, AudioRetentionSweepResult &result);
    void removeOlderThan(Date cutOff, std::vector<CachedFile> &files, AudioRetentionSweepResult &result);
    void removeOldestBeyond(qint64 limit, std::vector<CachedFile> &files, AudioRetentionSweepResult &result);

    const FileManager &m_fileManager;
    FileListing &m_fileListing;
    const Clock &m_clock;
};
