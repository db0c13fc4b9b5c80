#pragma once

#include "Platform/FileManager.h"

/// The user's folders as set in the environment; each is empty if not set.
struct LinuxFolders {
    QString home;
    /// Application data; ignored unless absolute.
    QString dataHome;
    /// The private folder of the session; ignored unless absolute.
    QString runtime;
    /// Shared temporary files.
    QString temporary;
    /// Settings; ignored unless absolute.
    QString configHome;

    /// The folders named by the environment and the user database.
    static LinuxFolders ofThisProcess();
};

/// The file system of a Linux desktop.
///
/// The temporary directory is chosen once, at construction: the session's private folder, else a folder of
/// the user under the system's temporary directory. Since transcripts go there, folders that another user
/// owns or can enter are rejected.
class LinuxFileManager final : public FileManager {
public:
    explicit LinuxFileManager(const LinuxFolders &folders = LinuxFolders::ofThisProcess());

    bool fileExists(const QString &path) const override;
    bool isExecutableFile(const QString &path) const override;
    bool isSafeFromOthers(const QString &path) const override;
    void createDirectory(const FileURL &url) override;
    QByteArray contents(const FileURL &url) const override;
    std::optional<FileURL> applicationSupportDirectory() const override;
    FileURL temporaryDirectory() const override;
    FileURL currentDirectory() const override;

private:
    std::optional<FileURL> m_applicationSupportDirectory;
    FileURL m_temporaryDirectory;
};

/// The user's settings file; in the temporary directory if the system names no folder of the user.
FileURL settingsFileURL(const LinuxFolders &folders, const FileManager &fileManager);
