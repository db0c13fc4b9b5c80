// Fills a small private file system step by step and adds to the history on it: whatever the free space, the
// file must be either the old or the new one, complete.

#include "Foundation/Error.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "ScratchHistory.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {
[[noreturn]] void giveUp(const QString &what) {
    std::fprintf(stderr, "full-disk-test: %s\n", qPrintable(what));
    std::exit(1);
}

void require(bool isFine, const QString &path) {
    if (!isFine)
        giveUp(SystemError::fromErrno(errno, path).errorDescription());
}

/// The status of a test that cannot run here; the CMakeLists.txt beside this file names it too.
constexpr int skippedStatus = 77;

/// Nothing was tested, since this machine or this user's rights do not give such a disk.
[[noreturn]] void skip(const QString &why) {
    std::fprintf(stderr,
        "full-disk-test: nothing is tested, since no disk of its own can be mounted here: %s\n",
        qPrintable(why));
    std::exit(skippedStatus);
}

/// For what only prepares the disk.
void skipUnless(bool isPossible, const QString &path) {
    if (!isPossible)
        skip(SystemError::fromErrno(errno, path).errorDescription());
}

void writeLine(const char *path, const QByteArray &line) {
    QFile file(QString::fromUtf8(path));
    skipUnless(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered), file.fileName());
    skipUnless(file.write(line) == line.size(), file.fileName());
}

/// Moves this process to a private mount namespace. Without root it also enters a user namespace, which may
/// mount tmpfs.
void enterOwnMounts() {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    const bool isRoot = user == 0 && ::unshare(CLONE_NEWNS) == 0;
    if (!isRoot) {
        skipUnless(::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0, QStringLiteral("a user namespace"));
        writeLine("/proc/self/setgroups", "deny");
        writeLine("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
        writeLine("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
    }
    skipUnless(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, QStringLiteral("/"));
}

void mountMemory(const QString &folder) {
    const int result
        = ::mount("tmpfs", qPrintable(folder), "tmpfs", MS_NOSUID | MS_NODEV, "size=1m,mode=0700");
    skipUnless(result == 0, folder);
}

void runCommand(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool hasRun = process.waitForFinished();
    if (!hasRun || process.exitCode() != 0) {
        const QString answer
            = hasRun ? QString::fromUtf8(process.readAll()).trimmed() : process.errorString();
        skip(program + QStringLiteral(" failed: ") + answer);
    }
}

/// Mounts an ext4 image; requires root.
void mountExt4(const QString &folder) {
    const QString image = folder + QStringLiteral(".ext4");
    QFile file(image);
    require(file.open(QIODevice::WriteOnly) && file.resize(8 * 1024 * 1024), image);
    file.close();
    // No reserved blocks, so that the disk is full for root too.
    runCommand(QStringLiteral("mkfs.ext4"), { QStringLiteral("-q"), QStringLiteral("-m0"), image });
    runCommand(QStringLiteral("mount"), { QStringLiteral("-o"), QStringLiteral("loop"), image, folder });
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class FullDiskTest {
public:
    explicit FullDiskTest(const QString &folder)
        : m_folder(folder)
        , m_history(folder)
        , m_file(ScratchHistory::filePath(folder)) {
        // A history of some dozens of blocks, so that the disk can become full anywhere in it.
        for (int number = 0; number < 40; ++number)
            addDictation();
        m_history->waitUntilWritten();
        if (storedCount() != 40)
            giveUp(QStringLiteral("the empty disk does not take the history"));
    }

    /// Adds an entry for every number of free blocks from none to more than enough.
    void run() {
        const qint64 mostBytes = 2 * contentOf(m_file).size();
        for (qint64 freeBytes = 0; freeBytes <= mostBytes; freeBytes += blockSize())
            tryWith(freeBytes);
        std::printf("  %d steps of %lld bytes: %d saves failed with the old file whole, %d worked\n",
            m_failedCount + m_workedCount, static_cast<long long>(blockSize()), m_failedCount, m_workedCount);
        if (m_failedCount == 0 || m_workedCount == 0)
            giveUp(QStringLiteral("the disk was never full, or always"));
    }

private:
    void addDictation() {
        m_history->add({ .rawText = QString(1000, QChar(u'ă')), .language = QStringLiteral("ro") });
    }

    void tryWith(qint64 freeBytes) {
        const QByteArray before = contentOf(m_file);
        fillTo(freeBytes);
        addDictation();
        m_history->waitUntilWritten();
        const QByteArray after = contentOf(m_file);
        const bool hasWorked = after == HistoryCodec::encode(m_history->entries());
        if (!hasWorked && after != before)
            giveUp(QStringLiteral("with %1 bytes free the file is neither old nor new").arg(freeBytes));
        checkNoLeftovers();
        removeBallast();
        ++(hasWorked ? m_workedCount : m_failedCount);
        restore(before);
    }

    /// Once there is space again, the next change must save everything; the next step starts from the same
    /// size.
    void restore(const QByteArray &before) {
        m_history->deleteEntry(m_history->entries().front().id);
        m_history->waitUntilWritten();
        if (contentOf(m_file) != before)
            giveUp(QStringLiteral("a save with room again did not bring the file up to date"));
    }

    void checkNoLeftovers() const {
        const QDir folder(m_folder + QStringLiteral("/Tolmi"));
        const QStringList names
            = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        if (names != QStringList(QStringLiteral("history.json")))
            giveUp(QStringLiteral("left over: ") + names.join(u' '));
    }

    qsizetype storedCount() const {
        const auto entries = HistoryCodec::decode(contentOf(m_file));
        return entries ? entries->size() : -1;
    }

    struct statvfs status() const {
        struct statvfs status { };
        require(::statvfs(qPrintable(m_folder), &status) == 0, m_folder);
        return status;
    }

    qint64 blockSize() const { return qint64(status().f_frsize); }

    /// Occupies all space but `freeBytes`.
    void fillTo(qint64 freeBytes) {
        const FileDescriptor ballast(::open(qPrintable(ballastPath()), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        require(ballast.isValid(), ballastPath());
        // One large write, then block by block, since metadata takes blocks too. Not fallocate, which may
        // allocate metadata later.
        for (;;) {
            const qint64 tooMuch = qint64(status().f_bavail) * blockSize() - freeBytes;
            if (tooMuch <= 0)
                return;
            const bool isFirst = ::lseek(ballast.get(), 0, SEEK_CUR) == 0;
            const QByteArray content(isFirst ? tooMuch : blockSize(), 'x');
            if (::write(ballast.get(), content.constData(), size_t(content.size())) <= 0)
                return;
            // Forces delayed allocation.
            ::fdatasync(ballast.get());
        }
    }

    void removeBallast() {
        require(::unlink(qPrintable(ballastPath())) == 0, ballastPath());
        // Freed blocks may become available only with the next journal commit.
        const FileDescriptor folder(::open(qPrintable(m_folder), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        ::syncfs(folder.get());
    }

    QString ballastPath() const { return m_folder + QStringLiteral("/ballast"); }

    const QString m_folder;
    ScratchHistory m_history;
    const QString m_file;
    int m_failedCount = 0;
    int m_workedCount = 0;
};

void test(const char *name, void (*mountAt)(const QString &)) {
    const QTemporaryDir place;
    const QString folder = place.filePath(QStringLiteral("disk"));
    require(place.isValid() && QDir().mkdir(folder), folder);
    mountAt(folder);
    std::printf("%s\n", name);
    FullDiskTest(folder).run();
    require(::umount2(qPrintable(folder), 0) == 0, folder);
}
} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Adds to the history on a disk with less and less room, and checks that its file stays "
        "whole. In memory by default."));
    const QString ext4 = QStringLiteral("ext4");
    parser.addOption({ ext4, QStringLiteral("On an ext4 file system in a file, which takes root.") });
    parser.addHelpOption();
    parser.process(application);

    enterOwnMounts();
    if (parser.isSet(ext4))
        test("ext4", &mountExt4);
    else
        test("tmpfs", &mountMemory);
}
