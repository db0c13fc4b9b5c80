#include "TolmiApp/Audio/AudioRetentionSweeper.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"

#include <algorithm>

namespace {
[[noreturn]] void overflow() {
    fatalError(QStringLiteral("Tolmi: a number of the audio retention sweep is too large"));
}

qint64 product(qint64 left, qint64 right) {
    qint64 result = 0;
    if (__builtin_mul_overflow(left, right, &result))
        overflow();
    return result;
}

qint64 sum(qint64 left, qint64 right) {
    qint64 result = 0;
    if (__builtin_add_overflow(left, right, &result))
        overflow();
    return result;
}

template <typename File>
qint64 totalSize(const std::vector<File> &files) {
    qint64 total = 0;
    for (const File &file : files)
        total = sum(total, file.sizeBytes);
    return total;
}
} // namespace

AudioRetentionSweeper::AudioRetentionSweeper(
    const FileManager &fileManager, FileListing &fileListing, const Clock &clock)
    : m_fileManager(fileManager)
    , m_fileListing(fileListing)
    , m_clock(clock) { }

AudioRetentionSweepResult AudioRetentionSweeper::sweep(
    const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB) {
    AudioRetentionSweepResult result;
    if (!m_fileManager.fileExists(directoryURL.path()))
        return result;
    std::vector<CachedFile> files = loadFiles(directoryURL);
    const qint64 retentionSeconds = product(std::max<qint64>(1, retentionHours), 3600);
    removeOlderThan(m_clock.now() + -double(retentionSeconds), files, result);
    const qint64 limit = product(product(std::max<qint64>(1, maxSizeMB), 1024), 1024);
    removeOldestBeyond(limit, files, result);
    result.remainingBytes = totalSize(files);
    return result;
}

std::vector<AudioRetentionSweeper::CachedFile> AudioRetentionSweeper::loadFiles(
    const FileURL &directoryURL) const {
    std::vector<CachedFile> files;
    for (const FileURL &url : m_fileListing.contentsOfDirectory(directoryURL)) {
        try {
            const FileAttributes attributes = m_fileListing.attributes(url);
            if (attributes.isRegularFile)
                files.push_back({ url, attributes.size, attributes.modifiedAt });
        } catch (const SystemError &) {
            // The file may just have been deleted; the next sweep tries again.
        }
    }
    return files;
}

bool AudioRetentionSweeper::remove(const CachedFile &file, AudioRetentionSweepResult &result) {
    try {
        m_fileListing.removeItem(file.url);
    } catch (const SystemError &) {
        return false;
    }
    ++result.deletedFileCount;
    result.deletedBytes = sum(result.deletedBytes, file.sizeBytes);
    return true;
}

void AudioRetentionSweeper::removeOlderThan(
    Date cutOff, std::vector<CachedFile> &files, AudioRetentionSweepResult &result) {
    std::vector<CachedFile> kept;
    for (const CachedFile &file : files) {
        if (file.modifiedAt >= cutOff || !remove(file, result))
            kept.push_back(file);
    }
    files = std::move(kept);
}

void AudioRetentionSweeper::removeOldestBeyond(
    qint64 limit, std::vector<CachedFile> &files, AudioRetentionSweepResult &result) {
    const auto isOlder
        = [](const CachedFile &left, const CachedFile &right) { return left.modifiedAt < right.modifiedAt; };
    std::stable_sort(files.begin(), files.end(), isOlder);
    qint64 total = totalSize(files);
    std::vector<CachedFile> kept;
    for (const CachedFile &file : files) {
        if (total > limit && remove(file, result))
            total -= file.sizeBytes;
        else
            kept.push_back(file);
    }
    files = std::move(kept);
}
