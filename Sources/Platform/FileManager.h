#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>

#include <optional>

/// The file system as the program asks for it. Any thread may call it.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Whether something is at `path`; links are followed.
    virtual bool fileExists(const QString &path) const = 0;

    /// Whether the user may execute what is at `path`; folders pass.
    virtual bool isExecutableFile(const QString &path) const = 0;

    /// Whether nobody but this user, root and the accounts of the system can have put there what is at
    /// `path`, or can put something there: it and every folder above it, links on the way included, belong to
    /// them and are not writable for everybody. A folder in which everybody may remove only what is their own
    /// passes as one above, since what lies in it is looked at as well.
    virtual bool isSafeFromOthers(const QString &path) const = 0;

    /// Creates the folder and its missing parents, private to the user. An existing folder is success. Throws
    /// SystemError.
    virtual void createDirectory(const FileURL &url) = 0;

    /// The whole content of a file. Throws SystemError.
    virtual QByteArray contents(const FileURL &url) const = 0;

    /// The user's folder for application data; absent when the system names none. It need not exist.
    virtual std::optional<FileURL> applicationSupportDirectory() const = 0;

    /// A folder for temporary files that only the user can enter.
    virtual FileURL temporaryDirectory() const = 0;

    virtual FileURL currentDirectory() const = 0;
};
