#include "Platform/Linux/Files/LinuxFileManager.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Files/SystemAccounts.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr mode_t privateMode = 0700;

bool isFolder(const QByteArray &path) {
    struct stat status { };
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Whether `path` is a folder, not a link to one, that only this user can enter.
bool isPrivateFolder(const QString &path) {
    struct stat status { };
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid() && (status.st_mode & 07777) == privateMode;
}

/// Creates a private folder. Returns 0 or the errno value.
int makePrivateFolder(const QByteArray &path) {
    if (::mkdir(path.constData(), privateMode) != 0)
        return errno;
    // The umask may have removed the user's own permissions.
    return ::chmod(path.constData(), privateMode) == 0 ? 0 : errno;
}

/// Creates the folder and its missing parents. Returns 0 or the errno value.
int makePrivateFolders(const FileURL &url) {
    const QByteArray path = QFile::encodeName(url.path());
    int error = makePrivateFolder(path);
    const FileURL parent = url.deletingLastPathComponent();
    if (error == ENOENT && parent != url) {
        error = makePrivateFolders(parent);
        if (error == 0)
            error = makePrivateFolder(path);
    }
    return error == EEXIST && isFolder(path) ? 0 : error;
}

/// The folder named by the environment, else the default in the user's home.
std::optional<FileURL> userFolder(const QString &named, const QString &home, const QString &usual) {
    if (named.startsWith(u'/'))
        return FileURL(named);
    if (home.startsWith(u'/'))
        return FileURL(home).appendingPathComponent(usual);
    return std::nullopt;
}

/// A new folder with a random name, used when the usual one cannot be trusted. If creating it fails, the path
/// does not exist, so writing there fails.
FileURL freshTemporaryFolder(const FileURL &base) {
    const FileURL pattern = base.appendingPathComponent(QStringLiteral("tolmi-XXXXXX"));
    QByteArray path = QFile::encodeName(pattern.path());
    ::mkdtemp(path.data());
    return FileURL(QFile::decodeName(path));
}

FileURL temporaryDirectoryOf(const LinuxFolders &folders) {
    if (folders.runtime.startsWith(u'/') && isPrivateFolder(folders.runtime))
        return FileURL(folders.runtime);
    const FileURL base(folders.temporary);
    const FileURL own = base.appendingPathComponent(QStringLiteral("tolmi-") + QString::number(::geteuid()));
    makePrivateFolder(QFile::encodeName(own.path()));
    if (isPrivateFolder(own.path()))
        return own;
    const FileURL fresh = freshTemporaryFolder(base);
    logLine(QStringLiteral("Tolmi: %1 is not private to the user; using %2").arg(own.path(), fresh.path()));
    return fresh;
}

/// Walks a path from the root, component by component, and checks everything on the way.
class TrustedPath {
public:
    explicit TrustedPath(const QString &path) { push(QFile::encodeName(path)); }

    /// Whether no other user controls what the path resolves to.
    bool isSafe() {
        bool isSafeSoFar = look();
        while (isSafeSoFar && !m_isMissing && !m_names.empty()) {
            const QByteArray name = m_names.back();
            m_names.pop_back();
            isSafeSoFar = enter(name);
        }
        return isSafeSoFar;
    }

private:
    static constexpr int maxLinks = 40;

    /// Puts the components of `path` before the remaining ones.
    void push(const QByteArray &path) {
        const QList<QByteArray> names = path.split('/');
        m_names.insert(m_names.end(), names.rbegin(), names.rend());
    }

    bool enter(const QByteArray &name) {
        if (name.isEmpty() || name == ".")
            return true;
        if (name == "..") {
            m_path.truncate(std::max<qsizetype>(m_path.lastIndexOf('/'), 0));
            return look();
        }
        const QByteArray folder = m_path;
        m_path += '/' + name;
        const bool isSafeSoFar = look();
        return m_isLink ? isSafeSoFar && follow(folder) : isSafeSoFar;
    }

    bool look() {
        struct stat status { };
        if (::lstat(m_path.isEmpty() ? "/" : m_path.constData(), &status) != 0) {
            m_isMissing = true;
            return errno == ENOENT && !m_isOpenToAll;
        }
        m_isLink = S_ISLNK(status.st_mode);
        // The mode of a link is meaningless.
        m_isOpenToAll = !m_isLink && (status.st_mode & S_IWOTH);
        const bool isShared = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX);
        return isTrustedAccount(status.st_uid) && (!m_isOpenToAll || isShared);
    }

    bool follow(const QByteArray &folder) {
        std::array<char, PATH_MAX> target;
        const ssize_t size = ::readlink(m_path.constData(), target.data(), target.size());
        if (size <= 0 || ++m_linkCount > maxLinks)
            return false;
        m_isLink = false;
        push(QByteArray(target.data(), size));
        m_path = target.front() == '/' ? QByteArray() : folder;
        return look();
    }

    /// The remaining components, the next one last.
    std::vector<QByteArray> m_names;
    /// The resolved path so far; empty for the root.
    QByteArray m_path;
    bool m_isLink = false;
    bool m_isOpenToAll = false;
    bool m_isMissing = false;
    int m_linkCount = 0;
};

FileDescriptor openForReading(const FileURL &url) {
    FileDescriptor file(::open(QFile::encodeName(url.path()).constData(), O_RDONLY | O_CLOEXEC));
    if (!file.isValid())
        throw SystemError::fromErrno(errno, url.path());
    return file;
}
} // namespace

LinuxFolders LinuxFolders::ofThisProcess() {
    LinuxFolders folders;
    folders.home = qEnvironmentVariable("HOME");
    if (const passwd *user = folders.home.isEmpty() ? ::getpwuid(::geteuid()) : nullptr)
        folders.home = QFile::decodeName(user->pw_dir);
    folders.dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    folders.runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    folders.temporary = QDir::tempPath();
    folders.configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    return folders;
}

LinuxFileManager::LinuxFileManager(const LinuxFolders &folders)
    : m_applicationSupportDirectory(
        userFolder(folders.dataHome, folders.home, QStringLiteral(".local/share")))
    , m_temporaryDirectory(temporaryDirectoryOf(folders)) { }

bool LinuxFileManager::fileExists(const QString &path) const {
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0;
}

bool LinuxFileManager::isExecutableFile(const QString &path) const {
    return ::access(QFile::encodeName(path).constData(), X_OK) == 0;
}

bool LinuxFileManager::isSafeFromOthers(const QString &path) const {
    return TrustedPath(QDir::current().filePath(path)).isSafe();
}

void LinuxFileManager::createDirectory(const FileURL &url) {
    if (const int error = makePrivateFolders(url))
        throw SystemError::fromErrno(error, url.path());
}

QByteArray LinuxFileManager::contents(const FileURL &url) const {
    const FileDescriptor file = openForReading(url);
    QByteArray content;
    // Only a hint: the file may change while it is read, and procfs files report no size.
    struct stat status { };
    if (::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode))
        content.reserve(status.st_size);
    std::array<char, 65536> piece;
    for (;;) {
        const ssize_t count = ::read(file.get(), piece.data(), piece.size());
        if (count == 0)
            return content;
        if (count > 0)
            content.append(piece.data(), count);
        else if (errno != EINTR)
            throw SystemError::fromErrno(errno, url.path());
    }
}

std::optional<FileURL> LinuxFileManager::applicationSupportDirectory() const {
    return m_applicationSupportDirectory;
}

FileURL LinuxFileManager::temporaryDirectory() const {
    return m_temporaryDirectory;
}

FileURL LinuxFileManager::currentDirectory() const {
    return FileURL(QDir::currentPath());
}

FileURL settingsFileURL(const LinuxFolders &folders, const FileManager &fileManager) {
    const std::optional<FileURL> named
        = userFolder(folders.configHome, folders.home, QStringLiteral(".config"));
    const FileURL base = named ? *named : fileManager.temporaryDirectory();
    return base.appendingPathComponent(QStringLiteral("Tolmi/settings.json"));
}
