#include "TolmiApp/Profile/ProfileAvatarStorage.h"

#include "Text/Text.h"
#include "TolmiApp/Profile/PictureThumbnail.h"
#include "TolmiApp/Settings/ApplicationFolder.h"

namespace {

constexpr int thumbnailSide = 96;
const QString originalPrefix = QStringLiteral("avatar-original.");
const QString thumbnailName = QStringLiteral("avatar-thumb.jpg");
const QString relativeFolder = QStringLiteral("profile/");

QString normalizedExtension(const FileURL &url) {
    const QString extension = Text::lowerCased(Text::trimmed(url.pathExtension()));
    return extension.isEmpty() ? QStringLiteral("img") : extension;
}

} // namespace

ProfileAvatarStorage::ProfileAvatarStorage(
    const Platform &platform, const std::optional<FileURL> &rootDirectoryURL, qint64 maxFileSizeBytes)
    : m_platform(platform)
    , m_tolmiRootDirectoryURL(rootDirectoryURL ? rootDirectoryURL->deletingLastPathComponent()
                                               : tolmiRootDirectoryURL(platform.fileManager))
    , m_rootDirectoryURL(rootDirectoryURL
              ? *rootDirectoryURL
              : m_tolmiRootDirectoryURL.appendingPathComponent(QStringLiteral("profile")))
    , m_maxFileSizeBytes(maxFileSizeBytes) { }

const QStringList &ProfileAvatarStorage::imageExtensions() {
    static const QStringList extensions
        = QStringLiteral("avif bmp gif heic heif icns ico jp2 jpe jpeg jpg jxl pbm pgm png ppm psd svg tga "
                         "tif tiff webp xbm xpm")
              .split(u' ');
    return extensions;
}

void ProfileAvatarStorage::validateSourceFile(const FileURL &sourceURL) const {
    if (!imageExtensions().contains(Text::lowerCased(sourceURL.pathExtension())))
        throw ProfileAvatarStorageError::unsupportedType();
    if (sizeOfFile(sourceURL) > m_maxFileSizeBytes)
        throw ProfileAvatarStorageError::fileTooLarge(m_maxFileSizeBytes);
}

qint64 ProfileAvatarStorage::sizeOfFile(const FileURL &url) const {
    try {
        return m_platform.fileListing.attributesOfTarget(url).size;
    } catch (const SystemError &) {
        // It cannot be read either, which comes out when it is copied.
        return 0;
    }
}

ProfileAvatarImportResult ProfileAvatarStorage::importAvatar(const FileURL &sourceURL) const {
    validateSourceFile(sourceURL);
    m_platform.fileManager.createDirectory(m_rootDirectoryURL);
    try {
        return replaceFiles(sourceURL);
    } catch (const SystemError &) {
        throw ProfileAvatarStorageError::writeFailed();
    }
}

ProfileAvatarImportResult ProfileAvatarStorage::replaceFiles(const FileURL &sourceURL) const {
    const QString originalName = originalPrefix + normalizedExtension(sourceURL);
    const FileURL original = m_rootDirectoryURL.appendingPathComponent(originalName);
    const FileURL thumbnail = m_rootDirectoryURL.appendingPathComponent(thumbnailName);
    removeExistingOriginals(originalName);
    removeIfThere(original);
    removeIfThere(thumbnail);
    const std::optional<QByteArray> small = PictureThumbnail::jpeg(copy(sourceURL, original), thumbnailSide);
    if (!small)
        throw ProfileAvatarStorageError::decodeFailed();
    m_platform.fileWriter.write(thumbnail, *small, FilePrivacy::Private);
    return { relativeFolder + originalName, relativeFolder + thumbnailName };
}

void ProfileAvatarStorage::removeExistingOriginals(const QString &exceptFilename) const {
    std::vector<FileURL> files;
    try {
        files = m_platform.fileListing.contentsOfDirectory(m_rootDirectoryURL);
    } catch (const SystemError &) {
        // What cannot be listed counts as empty.
    }
    for (const FileURL &file : files) {
        const QString name = file.lastPathComponent();
        if (name.startsWith(originalPrefix) && name != exceptFilename)
            m_platform.fileListing.removeItem(file);
    }
}

void ProfileAvatarStorage::removeIfThere(const FileURL &url) const {
    try {
        // A link that leads nowhere is there too: what is written later would go to where it leads.
        m_platform.fileListing.attributes(url);
    } catch (const SystemError &) {
        return;
    }
    m_platform.fileListing.removeItem(url);
}

QByteArray ProfileAvatarStorage::copy(const FileURL &sourceURL, const FileURL &targetURL) const {
    // Reading anything else might wait for ever, or never end.
    if (!m_platform.fileListing.attributesOfTarget(sourceURL).isRegularFile)
        throw ProfileAvatarStorageError::writeFailed();
    QByteArray content = m_platform.fileManager.contents(sourceURL);
    m_platform.fileWriter.write(targetURL, content, FilePrivacy::Private);
    return content;
}

void ProfileAvatarStorage::removeAvatarFiles(const std::optional<QString> &imageRelativePath,
    const std::optional<QString> &thumbnailRelativePath) const {
    for (const std::optional<QString> &path : { imageRelativePath, thumbnailRelativePath }) {
        const std::optional<FileURL> url = resolveURL(true, path);
        if (url && m_platform.fileManager.fileExists(url->path()))
            m_platform.fileListing.removeItem(*url);
    }
}

std::optional<FileURL> ProfileAvatarStorage::resolveURL(const std::optional<QString> &relativePath) const {
    return resolveURL(false, relativePath);
}

std::optional<FileURL> ProfileAvatarStorage::resolveURL(
    bool allowMissing, const std::optional<QString> &relativePath) const {
    if (!staysInFolder(relativePath))
        return std::nullopt;
    const FileURL url = m_tolmiRootDirectoryURL.appendingPathComponent(*relativePath);
    const bool isGiven = allowMissing || m_platform.fileManager.fileExists(url.path());
    return isGiven ? std::optional(url) : std::nullopt;
}
