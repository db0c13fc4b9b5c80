#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>

#include <optional>

/// File system operations. Any thread may call it.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Whether `path` exists; links are followed.
    virtual bool fileExists(const QString &path) const = 0;

    /// Whether the user may execute `path`; also true for folders.
    virtual bool isExecutableFile(const QString &path) const = 0;

    /// Whether only this user, root and system accounts can have created, or can create or replace, what is
    /// at `path`: it and every folder above it, links on the way included, belong to one of them and are not
    /// world-writable. Parent folders with the sticky bit may be, since their entries are checked as well.
    virtual bool isSafeFromOthers(const QString &path) const = 0;

    /// Creates the folder and its missing parents, private to the user. Succeeds if the folder exists. Throws
    /// SystemError.
    virtual void createDirectory(const FileURL &url) = 0;

    /// The whole content of a file. Throws SystemError.
    virtual QByteArray contents(const FileURL &url) const = 0;

    /// The user's folder for application data; absent if the system has none. It need not exist.
    virtual std::optional<FileURL> applicationSupportDirectory() const = 0;

    /// A private folder for temporary files.
    virtual FileURL temporaryDirectory() const = 0;

    virtual FileURL currentDirectory() const = 0;
};
