#pragma once

#include "Foundation/Error.h"
#include "Platform/FileManager.h"

#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <vector>

/// A file system in memory. The public members are the test's: to be read and written only while no other
/// thread calls.
class FakeFileManager final : public FileManager {
public:
    /// One call of an operation, with the path it got.
    struct Call {
        QString operation;
        QString path;

        friend bool operator==(const Call &, const Call &) = default;
    };

    /// Files and what is in them, by path.
    std::map<QString, QByteArray> files;
    /// Folders by path.
    std::set<QString> folders { QStringLiteral("/") };
    /// The paths of the files that may be executed.
    std::set<QString> executables;

    /// The paths at which others may have put something.
    std::set<QString> opened;

    /// What the next calls of createDirectory and contents throw; none left, they work.
    std::deque<SystemError> createDirectoryFailures;
    mutable std::deque<SystemError> contentsFailures;

    std::optional<FileURL> applicationSupport { FileURL(QStringLiteral("/home/user/.local/share")) };
    FileURL temporary { QStringLiteral("/run/user/1000") };
    FileURL current { QStringLiteral("/home/user") };

    /// Every call that named a path, in order.
    mutable std::vector<Call> calls;

    bool fileExists(const QString &path) const override;
    bool isExecutableFile(const QString &path) const override;
    bool isSafeFromOthers(const QString &path) const override;
    void createDirectory(const FileURL &url) override;
    QByteArray contents(const FileURL &url) const override;
    std::optional<FileURL> applicationSupportDirectory() const override { return applicationSupport; }
    FileURL temporaryDirectory() const override { return temporary; }
    FileURL currentDirectory() const override { return current; }

    /// Makes an executable file.
    void addExecutable(const QString &path);

private:
    void record(const char *operation, const QString &path) const;

    mutable std::mutex m_mutex;
};
