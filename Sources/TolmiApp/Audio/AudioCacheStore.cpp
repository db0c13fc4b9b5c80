#include "TolmiApp/Audio/AudioCacheStore.h"

#include "Foundation/Uuid.h"
#include "TolmiApp/Settings/ApplicationFolder.h"

namespace {
QString withoutOuterSlashes(QStringView path) {
    while (path.startsWith(u'/'))
        path = path.sliced(1);
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.toString();
}
} // namespace

AudioCacheStore::AudioCacheStore(FileManager &fileManager)
    : m_fileManager(&fileManager)
    , m_rootDirectoryURL(
          tolmiRootDirectoryURL(fileManager).appendingPathComponent(QStringLiteral("audio-cache"))) { }

void AudioCacheStore::prepareDirectory() const {
    m_fileManager->createDirectory(m_rootDirectoryURL);
}

FileURL AudioCacheStore::makeRecordingURL() const {
    prepareDirectory();
    const QString name
        = QStringLiteral("recording-") + uuidString(QUuid::createUuid()) + QStringLiteral(".wav");
    return m_rootDirectoryURL.appendingPathComponent(name);
}

// Comparing string prefixes is enough, because all URLs passed in come from makeRecordingURL().
std::optional<QString> AudioCacheStore::relativePath(const FileURL &url) const {
    const QString path = url.standardizedFileURL().path();
    const QString root = m_rootDirectoryURL.standardizedFileURL().path();
    if (!path.startsWith(root))
        return std::nullopt;
    const QString rest = withoutOuterSlashes(QStringView(path).sliced(root.size()));
    return rest.isEmpty() ? std::nullopt : std::optional(rest);
}

FileURL AudioCacheStore::resolveURL(const QString &relativePath) const {
    return m_rootDirectoryURL.appendingPathComponent(relativePath);
}
