#pragma once

#include "Platform/AtomicFileWriter.h"
#include "Platform/FileListing.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Profile/ProfileAvatarStorageError.h"

#include <QStringList>

#include <optional>

/// The files of an avatar, counted from the application folder.
struct ProfileAvatarImportResult {
    QString imageRelativePath;
    QString thumbnailRelativePath;

    friend bool operator==(const ProfileAvatarImportResult &, const ProfileAvatarImportResult &) = default;
};

/// Keeps the picture that the user chose as avatar, and a small one made of it. The settings keep where they
/// are.
class ProfileAvatarStorage {
public:
    /// What the storage asks of the platform; all of it outlives the storage.
    struct Platform {
        FileManager &fileManager;
        FileListing &fileListing;
        AtomicFileWriter &fileWriter;
    };

    /// Largest picture file that is taken.
    static constexpr qint64 defaultMaxFileSizeBytes = 10LL * 1024 * 1024;

    /// `rootDirectoryURL` is the folder "profile" in the application folder unless given; a given one has
    /// its parent in the place of the application folder.
    explicit ProfileAvatarStorage(const Platform &platform,
        const std::optional<FileURL> &rootDirectoryURL = std::nullopt,
        qint64 maxFileSizeBytes = defaultMaxFileSizeBytes);

    /// The folder of the files.
    const FileURL &rootDirectoryURL() const { return m_rootDirectoryURL; }

    /// The endings of files that count as pictures, in lower case, without the dot. A decoder for each need
    /// not be there.
    static const QStringList &imageExtensions();

    /// Takes the picture in the place of the one before. Throws ProfileAvatarStorageError, or SystemError
    /// when the folder cannot be made. After a failure later than that the files before may be gone.
    ProfileAvatarImportResult importAvatar(const FileURL &sourceURL) const;

    /// Removes the files that are there; a path that leads out of the application folder is passed over.
    /// Throws SystemError.
    void removeAvatarFiles(const std::optional<QString> &imageRelativePath,
        const std::optional<QString> &thumbnailRelativePath) const;

    /// The file at the path, if it is there and the path stays within the application folder.
    std::optional<FileURL> resolveURL(const std::optional<QString> &relativePath) const;

private:
    std::optional<FileURL> resolveURL(bool allowMissing, const std::optional<QString> &relativePath) const;
    void validateSourceFile(const FileURL &sourceURL) const;
    qint64 sizeOfFile(const FileURL &url) const;
    ProfileAvatarImportResult replaceFiles(const FileURL &sourceURL) const;
    void removeExistingOriginals(const QString &exceptFilename) const;
    void removeIfThere(const FileURL &url) const;
    QByteArray copy(const FileURL &sourceURL, const FileURL &targetURL) const;

    Platform m_platform;
    FileURL m_tolmiRootDirectoryURL;
    FileURL m_rootDirectoryURL;
    qint64 m_maxFileSizeBytes;
};
