#pragma once

#include "Foundation/Date.h"
#include "Foundation/FileURL.h"

#include <vector>

/// File metadata.
struct FileAttributes {
    /// False for folders, links, devices and so on.
    bool isRegularFile = false;
    /// Bytes.
    qint64 size = 0;
    /// Time of the last content change.
    Date modifiedAt;

    friend bool operator==(const FileAttributes &, const FileAttributes &) = default;
};

/// Lists folders and removes files. Any thread may call it.
class FileListing {
public:
    virtual ~FileListing() = default;

    /// The folder's direct entries without hidden files, in no particular order. Throws SystemError.
    virtual std::vector<FileURL> contentsOfDirectory(const FileURL &url) const = 0;

    /// The attributes of the item; links are not followed. Throws SystemError.
    virtual FileAttributes attributes(const FileURL &url) const = 0;

    /// The attributes of the item; links are followed. Throws SystemError.
    virtual FileAttributes attributesOfTarget(const FileURL &url) const = 0;

    /// Removes a file, or a link but not its target; never a folder. Throws SystemError.
    virtual void removeItem(const FileURL &url) = 0;
};
