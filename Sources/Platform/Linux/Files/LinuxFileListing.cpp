#include "Platform/Linux/Files/LinuxFileListing.h"

#include "Foundation/Error.h"

#include <QFile>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
struct CloseDirectory {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

std::unique_ptr<DIR, CloseDirectory> openDirectory(const FileURL &url) {
    std::unique_ptr<DIR, CloseDirectory> directory(::opendir(QFile::encodeName(url.path()).constData()));
    if (!directory)
        throw SystemError::fromErrno(errno, url.path());
    return directory;
}

FileAttributes attributesOf(const struct stat &status) {
    const Date modifiedAt
        = Date::fromSecondsSince1970(double(status.st_mtim.tv_sec)) + double(status.st_mtim.tv_nsec) * 1e-9;
    return { bool(S_ISREG(status.st_mode)), qint64(status.st_size), modifiedAt };
}
} // namespace

std::vector<FileURL> LinuxFileListing::contentsOfDirectory(const FileURL &url) const {
    const auto directory = openDirectory(url);
    std::vector<FileURL> content;
    for (;;) {
        errno = 0;
        const dirent *item = ::readdir(directory.get());
        if (!item && errno != 0)
            throw SystemError::fromErrno(errno, url.path());
        if (!item)
            return content;
        if (item->d_name[0] != '.')
            content.push_back(url.appendingPathComponent(QFile::decodeName(item->d_name)));
    }
}

FileAttributes LinuxFileListing::attributes(const FileURL &url) const {
    struct stat status { };
    if (::lstat(QFile::encodeName(url.path()).constData(), &status) != 0)
        throw SystemError::fromErrno(errno, url.path());
    return attributesOf(status);
}

FileAttributes LinuxFileListing::attributesOfTarget(const FileURL &url) const {
    struct stat status { };
    if (::stat(QFile::encodeName(url.path()).constData(), &status) != 0)
        throw SystemError::fromErrno(errno, url.path());
    return attributesOf(status);
}

void LinuxFileListing::removeItem(const FileURL &url) {
    if (::unlink(QFile::encodeName(url.path()).constData()) != 0)
        throw SystemError::fromErrno(errno, url.path());
}
