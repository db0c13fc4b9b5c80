#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"

#include "Foundation/Error.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <QFile>
#include <QRandomGenerator>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr char temporaryPrefix[] = ".tolmi-";
constexpr char temporarySuffix[] = ".tmp";
constexpr qsizetype temporaryDigits = 16;

QByteArray newTemporaryName() {
    const QByteArray digits = QByteArray::number(QRandomGenerator::system()->generate64(), 16)
                                  .rightJustified(temporaryDigits, '0');
    return temporaryPrefix + digits + temporarySuffix;
}

bool isTemporaryName(const QByteArray &name) {
    constexpr qsizetype prefixLength = sizeof temporaryPrefix - 1;
    constexpr qsizetype suffixLength = sizeof temporarySuffix - 1;
    return name.size() == prefixLength + temporaryDigits + suffixLength && name.startsWith(temporaryPrefix)
        && name.endsWith(temporarySuffix);
}

/// The final target of the links at `url`, which need not exist. For a link cycle, one of the links.
FileURL linkTarget(FileURL url) {
    constexpr int maxLinks = 40; // the kernel's limit
    for (int count = 0; count < maxLinks; ++count) {
        std::array<char, PATH_MAX> target;
        const ssize_t length
            = ::readlink(QFile::encodeName(url.path()).constData(), target.data(), target.size());
        if (length <= 0)
            return url;
        const QString path = QFile::decodeName(QByteArray(target.data(), length));
        url = path.startsWith(u'/') ? FileURL(path)
                                    : url.deletingLastPathComponent().appendingPathComponent(path);
    }
    return url;
}

/// One atomic file replacement. Every operation throws SystemError with the caller's path.
class Replacement {
public:
    /// What all replacements of a writer share.
    struct Options {
        /// Without it, a new file that is not private follows the process's umask.
        std::optional<mode_t> usersMask;
        DiskWait &diskWait;
    };

    Replacement(const FileURL &url, const QByteArray &content, FilePrivacy privacy, const Options &options)
        : m_path(url.path())
        , m_content(content)
        , m_privacy(privacy)
        , m_usersMask(options.usersMask)
        , m_diskWait(options.diskWait) {
        const FileURL target = linkTarget(url);
        m_name = QFile::encodeName(target.lastPathComponent());
        const QByteArray folder = QFile::encodeName(target.deletingLastPathComponent().path());
        m_folder.reset(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!m_folder.isValid())
            fail(errno);
        m_mode = wantedMode();
    }

    ~Replacement() { removeTemporary(); }

    /// Writes an unnamed file and links it to a temporary name. False if the file system does not support
    /// that.
    bool prepareUnnamed() {
        m_file.reset(::openat(m_folder.get(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, creationMode()));
        if (!m_file.isValid())
            return false;
        fill();
        return linkTemporaryName();
    }

    /// Writes a file that has a temporary name from the start.
    void prepareNamed() {
        do {
            m_temporaryName = newTemporaryName();
            m_file.reset(::openat(m_folder.get(), m_temporaryName.constData(),
                O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, creationMode()));
        } while (!m_file.isValid() && errno == EEXIST);
        if (!m_file.isValid())
            failWithoutTemporary(errno);
        fill();
    }

    /// Renames the prepared file over the target.
    void commit() {
        if (::renameat(m_folder.get(), m_temporaryName.constData(), m_folder.get(), m_name.constData()) != 0)
            fail(errno);
        m_temporaryName.clear();
        // Errors are ignored: if the power fails before the folder is on disk, the old file is found, which
        // is complete as well.
        m_diskWait.waitFor(::fsync, m_folder.get());
    }

private:
    [[noreturn]] void fail(int errorNumber) const { throw SystemError::fromErrno(errorNumber, m_path); }

    [[noreturn]] void failWithoutTemporary(int errorNumber) {
        m_temporaryName.clear();
        fail(errorNumber);
    }

    /// The file mode; absent leaves it to the umask.
    std::optional<mode_t> wantedMode() const {
        if (m_privacy == FilePrivacy::Private)
            return 0600;
        struct stat replaced { };
        if (::fstatat(m_folder.get(), m_name.constData(), &replaced, AT_SYMLINK_NOFOLLOW) != 0)
            return m_usersMask ? std::optional<mode_t>(0666 & ~*m_usersMask) : std::nullopt;
        return replaced.st_mode & 0777;
    }

    mode_t creationMode() const { return m_mode ? 0600 : 0666; }

    void fill() {
        reserve();
        writeContent();
        if (m_mode && ::fchmod(m_file.get(), *m_mode) != 0)
            fail(errno);
        if (const int error = m_diskWait.waitFor(::fdatasync, m_file.get()))
            fail(error);
    }

    /// Allocates the space first, so that a full disk is detected before anything is written. On file systems
    /// without support, writing detects it.
    void reserve() {
        if (m_content.isEmpty() || ::fallocate(m_file.get(), 0, 0, m_content.size()) == 0)
            return;
        if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)
            fail(errno);
    }

    void writeContent() {
        const char *next = m_content.constData();
        qsizetype left = m_content.size();
        while (left > 0) {
            const ssize_t written = ::write(m_file.get(), next, size_t(left));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                fail(written < 0 ? errno : EIO);
            next += written;
            left -= written;
        }
    }

    bool linkTemporaryName() {
        std::array<char, 32> descriptorPath;
        std::snprintf(descriptorPath.data(), descriptorPath.size(), "/proc/self/fd/%d", m_file.get());
        int result = 0;
        do {
            m_temporaryName = newTemporaryName();
            result = ::linkat(AT_FDCWD, descriptorPath.data(), m_folder.get(), m_temporaryName.constData(),
                AT_SYMLINK_FOLLOW);
        } while (result != 0 && errno == EEXIST);
        if (result != 0)
            m_temporaryName.clear();
        return result == 0;
    }

    void removeTemporary() {
        if (!m_temporaryName.isEmpty())
            ::unlinkat(m_folder.get(), m_temporaryName.constData(), 0);
    }

    const QString m_path;
    const QByteArray &m_content;
    const FilePrivacy m_privacy;
    const std::optional<mode_t> m_usersMask;
    DiskWait &m_diskWait;
    QByteArray m_name;
    /// Empty while the temporary file has no name.
    QByteArray m_temporaryName;
    FileDescriptor m_folder;
    FileDescriptor m_file;
    std::optional<mode_t> m_mode;
};

struct FolderCloser {
    void operator()(DIR *folder) const { ::closedir(folder); }
};
} // namespace

void LinuxAtomicFileWriter::write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) {
    Replacement replacement(url, content, privacy, { m_usersMask, m_diskWait });
    const bool mayBeUnnamed = m_temporaryFiles == TemporaryFiles::UnnamedWherePossible;
    if (!mayBeUnnamed || !replacement.prepareUnnamed())
        replacement.prepareNamed();
    replacement.commit();
}

void LinuxAtomicFileWriter::sweepLeftovers(const FileURL &folder) {
    const std::unique_ptr<DIR, FolderCloser> entries(::opendir(QFile::encodeName(folder.path()).constData()));
    if (!entries)
        return;
    while (const dirent *entry = ::readdir(entries.get())) {
        // unlinkat does not remove folders, so a folder of that name, which is not ours, stays.
        if (isTemporaryName(entry->d_name))
            ::unlinkat(::dirfd(entries.get()), entry->d_name, 0);
    }
}
