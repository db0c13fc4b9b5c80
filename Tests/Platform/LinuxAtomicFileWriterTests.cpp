#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"

#include "Foundation/Error.h"
#include "Support/Print.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>

namespace {
using TemporaryFiles = LinuxAtomicFileWriter::TemporaryFiles;

/// Sets the umask of the process for its lifetime.
class Umask {
public:
    explicit Umask(mode_t mask)
        : m_previous(::umask(mask)) { }
    ~Umask() { ::umask(m_previous); }

private:
    mode_t m_previous;
};

/// Limits the file size of the process for its lifetime, to simulate a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_previous);
        const rlimit limited { bytes, m_previous.rlim_max };
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }

private:
    void (*m_previousHandler)(int);
    rlimit m_previous {};
};

class LinuxAtomicFileWriterTest : public testing::TestWithParam<TemporaryFiles> {
protected:
    LinuxAtomicFileWriterTest()
        : writer(GetParam()) { }

    QString path(const char *name) const { return folder.filePath(QString::fromUtf8(name)); }

    static void put(const QString &path, const QByteArray &content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray content(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
    }

    static int modeOf(const QString &path) {
        struct stat status { };
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 07777) : -1;
    }

    /// All names in the folder, including hidden ones.
    QString names() const {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .join(u' ');
    }

    /// The error of writing, empty if none.
    QString errorOf(const QString &path, const QByteArray &newContent) {
        try {
            writer.write(FileURL(path), newContent, FilePrivacy::Private);
            return QString();
        } catch (const SystemError &error) {
            return error.errorDescription();
        }
    }

    QTemporaryDir folder;
    LinuxAtomicFileWriter writer;
};

INSTANTIATE_TEST_SUITE_P(TemporaryFiles, LinuxAtomicFileWriterTest,
    testing::Values(TemporaryFiles::UnnamedWherePossible, TemporaryFiles::Named),
    [](const auto &info) { return info.param == TemporaryFiles::Named ? "Named" : "UnnamedWherePossible"; });
} // namespace

TEST_P(LinuxAtomicFileWriterTest, WritesANewFileAndReplacesIt) {
    const QString file = path("settings.json");
    for (const QByteArray &text :
        { QByteArrayLiteral("first"), QByteArray(3 << 20, 'x'), QByteArray(), QByteArray("\0\xFF\n", 3) }) {
        writer.write(FileURL(file), text, FilePrivacy::Private);
        EXPECT_TRUE(content(file) == text);
        EXPECT_EQ(names(), u"settings.json");
    }
}

TEST_P(LinuxAtomicFileWriterTest, KeepsAPrivateFilePrivate) {
    for (const mode_t mask : { 0000, 0022, 0777 }) {
        const Umask umask(mask);
        const QString file = path("private");
        QFile::remove(file);
        writer.write(FileURL(file), "new", FilePrivacy::Private);
        EXPECT_EQ(modeOf(file), 0600);
        ::chmod(QFile::encodeName(file).constData(), 0666);
        writer.write(FileURL(file), "replaced", FilePrivacy::Private);
        EXPECT_EQ(modeOf(file), 0600);
    }
}

TEST_P(LinuxAtomicFileWriterTest, AnExportedFileHasTheDefaultMode) {
    for (const mode_t mask : { 0000, 0022, 0027, 0077 }) {
        const Umask umask(mask);
        const QString file = path("exported");
        QFile::remove(file);
        writer.write(FileURL(file), "new", FilePrivacy::AsUsual);
        EXPECT_EQ(modeOf(file), int(0666 & ~mask));
        for (const mode_t mode : { 0640, 0604, 0600, 0755 }) {
            ::chmod(QFile::encodeName(file).constData(), mode);
            writer.write(FileURL(file), "replaced", FilePrivacy::AsUsual);
            EXPECT_EQ(modeOf(file), int(mode));
        }
    }
}

TEST_P(LinuxAtomicFileWriterTest, FollowsSymbolicLinks) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("real")));
    put(path("real/file"), "old");
    ASSERT_TRUE(QFile::link(QStringLiteral("real/file"), path("relative")));
    ASSERT_TRUE(QFile::link(path("relative"), path("twice")));
    ASSERT_TRUE(QFile::link(path("real/missing"), path("dangling")));
    writer.write(FileURL(path("twice")), "new", FilePrivacy::Private);
    EXPECT_EQ(content(path("real/file")), "new");
    writer.write(FileURL(path("dangling")), "made", FilePrivacy::Private);
    EXPECT_EQ(content(path("real/missing")), "made");
    EXPECT_TRUE(QFileInfo(path("twice")).isSymLink());
    EXPECT_TRUE(QFileInfo(path("dangling")).isSymLink());
}

TEST_P(LinuxAtomicFileWriterTest, ReportsWriteErrors) {
    put(path("file"), "old");
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder")));
    ASSERT_TRUE(QFile::link(path("ring"), path("ring")));
    const struct {
        QString path;
        QString error;
    } cases[] {
        { path("missing/file"), QStringLiteral("No such file or directory: ") + path("missing/file") },
        { path("file/file"), QStringLiteral("Not a directory: ") + path("file/file") },
        { path("folder"), QStringLiteral("Is a directory: ") + path("folder") },
        { QString(), QStringLiteral("No such file or directory: ") },
        { QStringLiteral("/proc/tolmi"), QStringLiteral("No such file or directory: /proc/tolmi") },
        { path(QByteArray(300, 'n').constData()),
            QStringLiteral("File name too long: ") + path(QByteArray(300, 'n').constData()) },
    };
    for (const auto &[target, error] : cases)
        EXPECT_EQ(errorOf(target, "new"), error);
    EXPECT_EQ(names(), u"file folder ring");
    EXPECT_EQ(content(path("file")), "old");
}

TEST_P(LinuxAtomicFileWriterTest, KeepsTheOldFileWhenTheDiskIsFull) {
    put(path("file"), "old");
    QString error;
    {
        const FileSizeLimit limit(64 * 1024);
        error = errorOf(path("file"), QByteArray(1 << 20, 'x'));
    }
    EXPECT_EQ(error, QStringLiteral("File too large: ") + path("file"));
    EXPECT_EQ(content(path("file")), "old");
    EXPECT_EQ(names(), u"file");
}

TEST_P(LinuxAtomicFileWriterTest, AReaderSeesTheOldOrTheNewContent) {
    const QByteArray one(100 * 1000, '1');
    const QByteArray two(200 * 1000, '2');
    const QString file = path("file");
    writer.write(FileURL(file), one, FilePrivacy::Private);
    std::atomic<bool> isDone = false;
    std::thread writing([&] {
        for (int count = 0; count < 20; ++count)
            writer.write(FileURL(file), count % 2 == 0 ? two : one, FilePrivacy::Private);
        isDone = true;
    });
    bool isWhole = true;
    while (!isDone) {
        const QByteArray seen = content(file);
        isWhole = isWhole && (seen == one || seen == two);
    }
    writing.join();
    EXPECT_TRUE(isWhole);
}

TEST_P(LinuxAtomicFileWriterTest, SweepsLeftoversOfKilledProcesses) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("sub/.tolmi-0123456789abcdef.tmp")));
    for (const char *name : { ".tolmi-0123456789abcdef.tmp", ".tolmi-ffffffffffffffff.tmp", ".tolmi-0123.tmp",
             ".tolmi-0123456789abcdef", "tolmi-0123456789abcdef.tmp", "history.json", "sub/history.json" })
        put(path(name), "x");
    writer.sweepLeftovers(FileURL(folder.path()));
    EXPECT_EQ(
        names(), u".tolmi-0123.tmp .tolmi-0123456789abcdef history.json sub tolmi-0123456789abcdef.tmp");
    writer.sweepLeftovers(FileURL(path("sub")));
    EXPECT_TRUE(QFileInfo::exists(path("sub/.tolmi-0123456789abcdef.tmp")));
    EXPECT_TRUE(QFileInfo::exists(path("sub/history.json")));
    writer.sweepLeftovers(FileURL(path("missing")));
}

TEST(LinuxAtomicFileWriter, UsesTheUsersMaskInsteadOfAStricterProcessMask) {
    const QTemporaryDir folder;
    const FileURL url(folder.filePath(QStringLiteral("export.txt")));
    const mode_t usual = umask(0077);
    LinuxAtomicFileWriter(mode_t(0027)).write(url, "text", FilePrivacy::AsUsual);
    umask(usual);
    struct stat written { };
    ASSERT_EQ(stat(QFile::encodeName(url.path()).constData(), &written), 0);
    EXPECT_EQ(written.st_mode & 0777, mode_t(0640));
}
