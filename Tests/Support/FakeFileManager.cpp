#include "Support/FakeFileManager.h"

#include <cerrno>

namespace {
void throwNextOf(std::deque<SystemError> &failures) {
    if (failures.empty())
        return;
    const SystemError failure = failures.front();
    failures.pop_front();
    throw failure;
}
} // namespace

bool FakeFileManager::fileExists(const QString &path) const {
    const std::lock_guard lock(m_mutex);
    record("fileExists", path);
    return files.count(path) > 0 || folders.count(path) > 0;
}

bool FakeFileManager::isExecutableFile(const QString &path) const {
    const std::lock_guard lock(m_mutex);
    record("isExecutableFile", path);
    return executables.count(path) > 0 || folders.count(path) > 0;
}

bool FakeFileManager::isSafeFromOthers(const QString &path) const {
    const std::lock_guard lock(m_mutex);
    for (FileURL url(path);; url = url.deletingLastPathComponent()) {
        if (opened.count(url.path()) > 0)
            return false;
        if (url == url.deletingLastPathComponent())
            return true;
    }
}

void FakeFileManager::createDirectory(const FileURL &url) {
    const std::lock_guard lock(m_mutex);
    record("createDirectory", url.path());
    throwNextOf(createDirectoryFailures);
    if (url.path().isEmpty())
        throw SystemError::fromErrno(ENOENT, url.path());
    if (files.count(url.path()) > 0)
        throw SystemError::fromErrno(EEXIST, url.path());
    FileURL folder = url;
    std::set<QString> missing;
    for (; folders.count(folder.path()) == 0; folder = folder.deletingLastPathComponent()) {
        if (files.count(folder.path()) > 0)
            throw SystemError::fromErrno(ENOTDIR, url.path());
        missing.insert(folder.path());
    }
    folders.merge(missing);
}

QByteArray FakeFileManager::contents(const FileURL &url) const {
    const std::lock_guard lock(m_mutex);
    record("contents", url.path());
    throwNextOf(contentsFailures);
    const auto file = files.find(url.path());
    if (file == files.end())
        throw SystemError::fromErrno(folders.count(url.path()) > 0 ? EISDIR : ENOENT, url.path());
    return file->second;
}

void FakeFileManager::addExecutable(const QString &path) {
    files[path];
    executables.insert(path);
}

void FakeFileManager::record(const char *operation, const QString &path) const {
    calls.push_back({ QString::fromLatin1(operation), path });
}
