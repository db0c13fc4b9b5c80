#pragma once

#include "Platform/FileManager.h"

#include <optional>

/// The folder of the recordings, and how the history refers to them. Copies may be used on any thread.
class AudioCacheStore {
public:
    /// `fileManager` must outlive the store. Does not access the disk.
    explicit AudioCacheStore(FileManager &fileManager);

    /// The flat folder that contains all recordings.
    const FileURL &rootDirectoryURL() const { return m_rootDirectoryURL; }

    /// Creates the folder. Throws SystemError.
    void prepareDirectory() const;

    /// A new path in the folder. Creates the folder if necessary, but not the file. Throws SystemError.
    FileURL makeRecordingURL() const;

    /// The path that the history stores for a recording; absent for files outside the folder.
    std::optional<QString> relativePath(const FileURL &url) const;

    /// The file that a stored path refers to. Not validated: it may not exist or may be outside the folder.
    FileURL resolveURL(const QString &relativePath) const;

private:
    FileManager *m_fileManager;
    FileURL m_rootDirectoryURL;
};
