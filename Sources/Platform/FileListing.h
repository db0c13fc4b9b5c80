#pragma once

#include "Foundation/Date.h"
#include "Foundation/FileURL.h"

#include <vector>

/// What the system knows of a file without opening it.
struct FileAttributes {
    /// False for folders, links and everything else that only looks like a file.
    bool isRegularFile = false;
    /// Bytes.
    qint64 size = 0;
    /// When the content last changed.
    Date modifiedAt;

    friend bool operator==(const FileAttributes &, const FileAttributes &) = default;
};

/// Looks into a folder and removes files there. Any thread may call it.
class FileListing {
public:
    virtual ~FileListing() = default;

    /// What is in the folder itself, hidden files left out, in no particular order. Throws SystemError.
    virtual std::vector<FileURL> contentsOfDirectory(const FileURL &url) const = 0;

    /// The attributes of the item itself; links are not followed. Throws SystemError.
    virtual FileAttributes attributes(const FileURL &url) const = 0;

    /// The attributes of what a link leads to, else of the item itself. Throws SystemError.
    virtual FileAttributes attributesOfTarget(const FileURL &url) const = 0;

    /// Removes a file, or a link but not what it names; never a folder. Throws SystemError.
    virtual void removeItem(const FileURL &url) = 0;
};
