#pragma once

#include "Platform/FileManager.h"

/// Where the system tells that the user's folders are; each is empty when it tells nothing.
struct LinuxFolders {
    QString home;
    /// The user's application data; counts only when absolute.
    QString dataHome;
    /// The user's private folder of this session; counts only when absolute.
    QString runtime;
    /// Temporary files of everybody.
    QString temporary;
    /// The user's settings; counts only when absolute.
    QString configHome;

    /// The folders that this process's environment and the user database name.
    static LinuxFolders ofThisProcess();
};

/// The file system of a Linux desktop.
///
/// The temporary directory is settled once, at construction: the session's private folder, else one of the
/// user's own under the system's temporary directory. A folder that somebody else owns or can enter is
/// refused, since transcripts go there.
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

/// The file that holds the user's settings; in the temporary directory where the system names no folder of
/// the user.
FileURL settingsFileURL(const LinuxFolders &folders, const FileManager &fileManager);
