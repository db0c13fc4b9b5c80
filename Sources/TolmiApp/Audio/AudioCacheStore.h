#pragma once

#include "Platform/FileManager.h"

#include <optional>

/// Where recordings are kept, and how the history refers to one. Copies may be used on any thread.
class AudioCacheStore {
public:
    /// `fileManager` must outlive the store. The disk is not touched.
    explicit AudioCacheStore(FileManager &fileManager);

    /// The one flat folder that holds all recordings.
    const FileURL &rootDirectoryURL() const { return m_rootDirectoryURL; }

    /// Makes the folder. Throws SystemError.
    void prepareDirectory() const;

    /// A new name in the folder, which is made if it is missing; the file is not. Throws SystemError.
    FileURL makeRecordingURL() const;

    /// How the history refers to a recording; absent for a file whose path does not begin with the folder's.
    std::optional<QString> relativePath(const FileURL &url) const;

    /// The file that the history refers to. Nothing is checked: it may be missing or lie elsewhere.
    FileURL resolveURL(const QString &relativePath) const;

private:
    FileManager *m_fileManager;
    FileURL m_rootDirectoryURL;
};
