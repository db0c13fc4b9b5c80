#include "Platform/Linux/Files/LinuxFileManager.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {
/// Sets the umask of the process for its lifetime.
class Umask {
public:
    explicit Umask(mode_t mask)
        : m_old(::umask(mask)) { }
    ~Umask() { ::umask(m_old); }
    Umask(const Umask &) = delete;
    Umask &operator=(const Umask &) = delete;

private:
    mode_t m_old;
};

int modeOf(const QString &path) {
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 07777) : -1;
}

class LinuxFileManagerTest : public testing::Test {
protected:
    QString at(const QString &name) const { return m_folder.filePath(name); }

    QString makeFolder(const QString &name, mode_t mode) {
        const QString path = at(name);
        EXPECT_EQ(::mkdir(QFile::encodeName(path).constData(), mode), 0);
        EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
        return path;
    }

    QString ownTemporaryFolder() const { return at(QStringLiteral("tolmi-") + QString::number(::geteuid())); }

    /// The temporary directory when the session names `runtime`.
    QString temporaryDirectory(const QString &runtime) const {
        return LinuxFileManager({ {}, {}, runtime, m_folder.path() }).temporaryDirectory().path();
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(LinuxFileManagerTest, FoldersArePrivateWhateverTheUmask) {
    LinuxFileManager manager({ {}, {}, {}, at({}) });
    for (const mode_t mask : { mode_t(0), mode_t(0277), mode_t(0777) }) {
        const FileURL folder(at(QString::number(mask)));
        const Umask guard(mask);
        manager.createDirectory(folder.appendingPathComponent(QStringLiteral("inner")));
        EXPECT_EQ(modeOf(folder.path()), 0700);
        EXPECT_EQ(modeOf(folder.path() + QStringLiteral("/inner")), 0700);
    }
}

TEST_F(LinuxFileManagerTest, AnExistingFolderKeepsItsMode) {
    const QString path = makeFolder(QStringLiteral("open"), 0755);
    LinuxFileManager({ {}, {}, {}, at({}) }).createDirectory(FileURL(path));
    EXPECT_EQ(modeOf(path), 0755);
}

TEST_F(LinuxFileManagerTest, FollowsLinks) {
    const LinuxFileManager manager({ {}, {}, {}, at({}) });
    makeFolder(QStringLiteral("target"), 0700);
    ASSERT_TRUE(QFile::link(at(QStringLiteral("target")), at(QStringLiteral("link"))));
    ASSERT_TRUE(QFile::link(at(QStringLiteral("nothing")), at(QStringLiteral("dangling"))));
    EXPECT_TRUE(manager.fileExists(at(QStringLiteral("link"))));
    EXPECT_FALSE(manager.fileExists(at(QStringLiteral("dangling"))));
}

TEST_F(LinuxFileManagerTest, ALinkToAFolderIsAFolder) {
    LinuxFileManager manager({ {}, {}, {}, at({}) });
    makeFolder(QStringLiteral("target"), 0700);
    ASSERT_TRUE(QFile::link(at(QStringLiteral("target")), at(QStringLiteral("link"))));
    EXPECT_NO_THROW(manager.createDirectory(FileURL(at(QStringLiteral("link")))));
}

TEST_F(LinuxFileManagerTest, WhatBelongsToTheUserOrTheSystemIsSafeFromOthers) {
    const LinuxFileManager manager({ {}, {}, {}, at({}) });
    makeFolder(QStringLiteral("own"), 0755);
    EXPECT_TRUE(QFile::copy(QStringLiteral("/bin/true"), at(QStringLiteral("own/program"))));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("own/program"))));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("own/../own//./program"))));
    EXPECT_TRUE(manager.isSafeFromOthers(QStringLiteral("/bin/sh")));
    EXPECT_TRUE(manager.isSafeFromOthers(QStringLiteral("/")));
    EXPECT_TRUE(manager.isSafeFromOthers(QStringLiteral("/../..")));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("own/missing/too"))));
}

TEST_F(LinuxFileManagerTest, WorldWritableIsNotSafeFromOthers) {
    const LinuxFileManager manager({ {}, {}, {}, at({}) });
    makeFolder(QStringLiteral("open"), 0777);
    makeFolder(QStringLiteral("open/own"), 0755);
    makeFolder(QStringLiteral("shared"), 01777);
    makeFolder(QStringLiteral("shared/own"), 0755);
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("open"))));
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("open/own"))));
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("open/missing"))));
    // In a sticky folder others cannot replace the user's files, but can create missing ones.
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("shared/own"))));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("shared/own/missing"))));
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("shared/missing"))));
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("shared/missing/below"))));
    QFile file(at(QStringLiteral("shared/own/file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(manager.isSafeFromOthers(file.fileName()));
    ASSERT_TRUE(file.setPermissions(file.permissions() | QFile::WriteOther));
    EXPECT_FALSE(manager.isSafeFromOthers(file.fileName()));
}

TEST_F(LinuxFileManagerTest, ALinkIsAsSafeAsItsTarget) {
    const LinuxFileManager manager({ {}, {}, {}, at({}) });
    makeFolder(QStringLiteral("open"), 0777);
    makeFolder(QStringLiteral("own"), 0755);
    const auto link = [this](const char *target, const char *name) {
        EXPECT_TRUE(QFile::link(QString::fromUtf8(target), at(QString::fromUtf8(name))));
        return at(QString::fromUtf8(name));
    };
    EXPECT_TRUE(manager.isSafeFromOthers(link("own", "toOwn")));
    EXPECT_TRUE(manager.isSafeFromOthers(link("/bin/sh", "toShell")));
    EXPECT_TRUE(manager.isSafeFromOthers(link("../own", "own/up")));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("own/up/up/missing"))));
    EXPECT_FALSE(manager.isSafeFromOthers(link("open", "toOpen")));
    EXPECT_FALSE(manager.isSafeFromOthers(link("own/../toOpen", "toOpenByAnother")));
    EXPECT_FALSE(manager.isSafeFromOthers(link("../own", "open/toOwn")));
    EXPECT_FALSE(manager.isSafeFromOthers(link("circle", "circle")));
}

TEST_F(LinuxFileManagerTest, WhatAnotherUserOwnsIsNotSafe) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    const LinuxFileManager manager({ {}, {}, {}, at({}) });
    constexpr uid_t stranger = 65534;
    makeFolder(QStringLiteral("shared"), 01777);
    const QByteArray folder = QFile::encodeName(makeFolder(QStringLiteral("shared/.tools"), 0755));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/sh"), at(QStringLiteral("shared/link"))));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("shared/.tools/whisper-cli"))));
    EXPECT_TRUE(manager.isSafeFromOthers(at(QStringLiteral("shared/link"))));
    ASSERT_EQ(::chown(folder.constData(), stranger, stranger), 0);
    ASSERT_EQ(
        ::lchown(QFile::encodeName(at(QStringLiteral("shared/link"))).constData(), stranger, stranger), 0);
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("shared/.tools/whisper-cli"))));
    EXPECT_FALSE(manager.isSafeFromOthers(at(QStringLiteral("shared/link"))));
}

TEST(LinuxFolders, ApplicationSupportIsTheDataHomeIfAbsolute) {
    const auto support = [](const LinuxFolders &folders) {
        const auto url = LinuxFileManager(folders).applicationSupportDirectory();
        return url ? url->path() : QStringLiteral("absent");
    };
    const QTemporaryDir folder;
    const QString home = QStringLiteral("/home/a");
    const QString standard = QStringLiteral("/home/a/.local/share");
    EXPECT_EQ(support({ home, QStringLiteral("/data"), {}, folder.path() }), QStringLiteral("/data"));
    EXPECT_EQ(support({ home, QStringLiteral("data"), {}, folder.path() }), standard);
    EXPECT_EQ(support({ home, {}, {}, folder.path() }), standard);
    EXPECT_EQ(support({ {}, {}, {}, folder.path() }), QStringLiteral("absent"));
}

TEST(LinuxFolders, SettingsAreInTheConfigurationHomeIfAbsolute) {
    const QTemporaryDir folder;
    const auto settings = [&folder](const QString &home, const QString &configHome) {
        const LinuxFolders folders { home, {}, {}, folder.path(), configHome };
        const LinuxFileManager files(folders);
        QString path = settingsFileURL(folders, files).path();
        return path.replace(files.temporaryDirectory().path(), QStringLiteral("(temporary)"));
    };
    const QString home = QStringLiteral("/home/a");
    EXPECT_EQ(settings(home, QStringLiteral("/c")), QStringLiteral("/c/Tolmi/settings.json"));
    EXPECT_EQ(settings(home, QStringLiteral("c")), QStringLiteral("/home/a/.config/Tolmi/settings.json"));
    EXPECT_EQ(settings(home, {}), QStringLiteral("/home/a/.config/Tolmi/settings.json"));
    EXPECT_EQ(settings({}, {}), QStringLiteral("(temporary)/Tolmi/settings.json"));
}

TEST(LinuxFolders, OfThisProcessComeFromItsEnvironment) {
    EXPECT_EQ(LinuxFolders::ofThisProcess().dataHome, qEnvironmentVariable("XDG_DATA_HOME"));
    EXPECT_EQ(LinuxFolders::ofThisProcess().runtime, qEnvironmentVariable("XDG_RUNTIME_DIR"));
    EXPECT_EQ(LinuxFolders::ofThisProcess().temporary, QDir::tempPath());
    EXPECT_EQ(LinuxFolders::ofThisProcess().configHome, qEnvironmentVariable("XDG_CONFIG_HOME"));
    EXPECT_TRUE(LinuxFolders::ofThisProcess().home.startsWith(u'/'));
}

TEST_F(LinuxFileManagerTest, ThePrivateRuntimeFolderIsTheTemporaryDirectory) {
    const QString runtime = makeFolder(QStringLiteral("runtime"), 0700);
    EXPECT_EQ(temporaryDirectory(runtime), runtime);
    EXPECT_EQ(modeOf(ownTemporaryFolder()), -1);
}

TEST_F(LinuxFileManagerTest, ARuntimeFolderThatIsNotPrivateIsSkipped) {
    const QString target = makeFolder(QStringLiteral("target"), 0700);
    ASSERT_TRUE(QFile::link(target, at(QStringLiteral("link"))));
    const QStringList refused { {}, QStringLiteral("relative"), at(QStringLiteral("missing")),
        at(QStringLiteral("link")), makeFolder(QStringLiteral("open"), 0755),
        makeFolder(QStringLiteral("sticky"), 01700) };
    for (const QString &runtime : refused) {
        EXPECT_EQ(temporaryDirectory(runtime), ownTemporaryFolder()) << runtime.toStdString();
        EXPECT_EQ(modeOf(ownTemporaryFolder()), 0700);
    }
}

TEST_F(LinuxFileManagerTest, ATemporaryFolderThatIsNotPrivateIsReplaced) {
    makeFolder(QStringLiteral("tolmi-") + QString::number(::geteuid()), 0777);
    const QString fresh = temporaryDirectory({});
    EXPECT_NE(fresh, ownTemporaryFolder());
    EXPECT_TRUE(fresh.startsWith(at(QStringLiteral("tolmi-"))));
    EXPECT_EQ(modeOf(fresh), 0700);
    EXPECT_NE(temporaryDirectory({}), fresh);
}

TEST_F(LinuxFileManagerTest, ALinkAsTemporaryFolderIsRejected) {
    ASSERT_TRUE(QFile::link(makeFolder(QStringLiteral("target"), 0700), ownTemporaryFolder()));
    EXPECT_NE(temporaryDirectory({}), ownTemporaryFolder());
}

/// A private folder of another user: created if we may, else root's home.
TEST_F(LinuxFileManagerTest, AFolderOfAnotherUserIsSkipped) {
    QString foreign = QStringLiteral("/root");
    if (::geteuid() == 0) {
        foreign = makeFolder(QStringLiteral("foreign"), 0700);
        constexpr uid_t nobody = 65534;
        ASSERT_EQ(::chown(QFile::encodeName(foreign).constData(), nobody, nobody), 0);
    }
    EXPECT_EQ(temporaryDirectory(foreign), ownTemporaryFolder());
}

TEST_F(LinuxFileManagerTest, TheNextStartDoesNotFollowAFolderReplacedByALink) {
    const QString first = temporaryDirectory({});
    ASSERT_EQ(first, ownTemporaryFolder());
    ASSERT_TRUE(QDir(first).removeRecursively());
    ASSERT_TRUE(QFile::link(makeFolder(QStringLiteral("trap"), 0700), first));
    EXPECT_NE(temporaryDirectory({}), ownTemporaryFolder());
}

TEST_F(LinuxFileManagerTest, WithoutAnyTemporaryFolderWritersGetAnError) {
    const QString missing = at(QStringLiteral("missing"));
    LinuxFileManager manager({ {}, {}, {}, missing });
    EXPECT_TRUE(manager.temporaryDirectory().path().startsWith(missing));
    EXPECT_FALSE(manager.fileExists(manager.temporaryDirectory().path()));
}
} // namespace
