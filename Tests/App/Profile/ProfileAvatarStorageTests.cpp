#include "TolmiApp/Profile/ProfileAvatarStorage.h"

#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileListing.h"
#include "Support/FakeFileManager.h"
#include "Support/Pictures.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/stat.h>

namespace {

using Error = ProfileAvatarStorageError;

std::optional<Error> errorOf(const std::function<void()> &work) {
    try {
        work();
    } catch (const Error &error) {
        return error;
    }
    return std::nullopt;
}

/// Files on the disk.
class AvatarStorageTest : public testing::Test {
protected:
    QString at(const QString &name) const { return m_folder.filePath(name); }
    FileURL write(const QString &name, const QByteArray &content) const {
        QFile file(at(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return FileURL(at(name));
    }
    static QByteArray contentOf(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    QStringList stored() const {
        return QDir(storage.rootDirectoryURL().path()).entryList(QDir::Files | QDir::System, QDir::Name);
    }
    ProfileAvatarImportResult import(const QString &name, const QByteArray &content) const {
        return storage.importAvatar(write(name, content));
    }
    std::optional<Error> importError(const FileURL &url) const {
        return errorOf([&] { storage.importAvatar(url); });
    }

    const QByteArray png = Pictures::file(Pictures::plain({ 200, 100 }, Qt::red), "PNG");
    const QByteArray jpeg = Pictures::file(Pictures::plain({ 200, 100 }, Qt::blue), "JPEG");
    const QString thumbnail = QStringLiteral("avatar-thumb.jpg");
    QTemporaryDir m_folder;
    LinuxFileManager files { { .home = {},
        .dataHome = m_folder.path(),
        .runtime = {},
        .temporary = m_folder.path(),
        .configHome = {} } };
    LinuxFileListing listing;
    LinuxAtomicFileWriter writer { 022 };
    ProfileAvatarStorage storage { { files, listing, writer } };
};

} // namespace

TEST_F(AvatarStorageTest, KeepsItsFilesInTheApplicationFolder) {
    EXPECT_EQ(storage.rootDirectoryURL().path(), at(QStringLiteral("Tolmi/profile")));
    const ProfileAvatarStorage elsewhere({ files, listing, writer }, FileURL(at(QStringLiteral("a/b"))));
    EXPECT_EQ(elsewhere.rootDirectoryURL().path(), at(QStringLiteral("a/b")));
    write(QStringLiteral("beside"), "x");
    QDir(m_folder.path()).mkdir(QStringLiteral("a"));
    write(QStringLiteral("a/file"), "x");
    EXPECT_EQ(elsewhere.resolveURL(QStringLiteral("file")), FileURL(at(QStringLiteral("a/file"))));
}

TEST_F(AvatarStorageTest, KeepsACopyAndASmallPicture) {
    const ProfileAvatarImportResult result = import(QStringLiteral("me.png"), png);
    EXPECT_EQ(result,
        (ProfileAvatarImportResult {
            QStringLiteral("profile/avatar-original.png"), QStringLiteral("profile/avatar-thumb.jpg") }));
    EXPECT_EQ(contentOf(storage.resolveURL(result.imageRelativePath)->path()), png);
    const QImage small(storage.resolveURL(result.thumbnailRelativePath)->path(), "JPEG");
    EXPECT_EQ(small.size(), QSize(96, 48));
}

TEST_F(AvatarStorageTest, FilesAreForTheUserAlone) {
    import(QStringLiteral("me.png"), png);
    for (const QString &name : stored()) {
        struct stat status { };
        const QByteArray path = QFile::encodeName(storage.rootDirectoryURL().path() + u'/' + name);
        ASSERT_EQ(::stat(path.constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600u) << name.toStdString();
    }
}

TEST_F(AvatarStorageTest, EndingsCountInAnyCaseAndAreStoredInLowerCase) {
    EXPECT_EQ(import(QStringLiteral("me.JPG"), jpeg).imageRelativePath, u"profile/avatar-original.jpg");
}

TEST_F(AvatarStorageTest, OnlyPicturesByTheirEnding) {
    for (const char *name : { "me", "me.txt", "me.pdf", "me.", "me. ", "me.png ", ".hidden", "me.svgz" })
        EXPECT_EQ(importError(write(QString::fromLatin1(name), png)), Error::unsupportedType()) << name;
    for (const char *ending : { "svg", "heic", "webp", "tiff", "gif" })
        EXPECT_TRUE(ProfileAvatarStorage::imageExtensions().contains(QLatin1String(ending))) << ending;
    EXPECT_FALSE(QDir(storage.rootDirectoryURL().path()).exists());
}

TEST_F(AvatarStorageTest, ThePictureMayBeAsLargeAsTheLimit) {
    const auto padded = [this](qint64 size) { return png + QByteArray(size - png.size(), '\0'); };
    EXPECT_EQ(ProfileAvatarStorage::defaultMaxFileSizeBytes, 10485760);
    EXPECT_EQ(importError(write(QStringLiteral("full.png"), padded(10485760))), std::nullopt);
    const std::optional<Error> error = importError(write(QStringLiteral("over.png"), padded(10485761)));
    EXPECT_EQ(error, Error::fileTooLarge(10485760));
    EXPECT_EQ(error->maxBytes(), 10485760);
    // The avatar from before is still there.
    EXPECT_EQ(stored(), QStringList({ QStringLiteral("avatar-original.png"), thumbnail }));
}

TEST_F(AvatarStorageTest, TheLimitHoldsBehindALinkToo) {
    const FileURL large = write(QStringLiteral("large.bin"), QByteArray(101, 'x'));
    const FileURL link(at(QStringLiteral("link.png")));
    ASSERT_TRUE(QFile::link(large.path(), link.path()));
    const ProfileAvatarStorage small({ files, listing, writer }, std::nullopt, 100);
    EXPECT_EQ(errorOf([&] { small.importAvatar(link); }), Error::fileTooLarge(100));
}

TEST_F(AvatarStorageTest, AnotherFormatReplacesTheOneBefore) {
    import(QStringLiteral("me.jpeg"), jpeg);
    const QByteArray before = contentOf(at(QStringLiteral("Tolmi/profile/avatar-thumb.jpg")));
    import(QStringLiteral("me.png"), png);
    EXPECT_EQ(stored(), QStringList({ QStringLiteral("avatar-original.png"), thumbnail }));
    EXPECT_NE(contentOf(at(QStringLiteral("Tolmi/profile/avatar-thumb.jpg"))), before);
}

TEST_F(AvatarStorageTest, OtherFilesInTheFolderStay) {
    import(QStringLiteral("me.jpeg"), jpeg);
    write(QStringLiteral("Tolmi/profile/avatar-originals.txt"), "mine");
    import(QStringLiteral("me.png"), png);
    EXPECT_TRUE(stored().contains(QStringLiteral("avatar-originals.txt")));
}

TEST_F(AvatarStorageTest, ATextNamedAsAPictureCannotBeDecodedAndStays) {
    import(QStringLiteral("me.jpeg"), jpeg);
    EXPECT_EQ(importError(write(QStringLiteral("notes.png"), "only words")), Error::decodeFailed());
    EXPECT_EQ(stored(), QStringList { QStringLiteral("avatar-original.png") });
    EXPECT_EQ(contentOf(at(QStringLiteral("Tolmi/profile/avatar-original.png"))), "only words");
}

TEST_F(AvatarStorageTest, WhatCannotBeReadIsAFailedWrite) {
    EXPECT_EQ(importError(FileURL(at(QStringLiteral("nothing.png")))), Error::writeFailed());
    QDir(m_folder.path()).mkdir(QStringLiteral("folder.png"));
    EXPECT_EQ(importError(FileURL(at(QStringLiteral("folder.png")))), Error::writeFailed());
    const QString pipe = at(QStringLiteral("pipe.png"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(importError(FileURL(pipe)), Error::writeFailed());
}

TEST_F(AvatarStorageTest, AFolderInTheWayIsAFailedWrite) {
    import(QStringLiteral("me.png"), png);
    QDir(storage.rootDirectoryURL().path()).mkdir(QStringLiteral("avatar-original.gif"));
    EXPECT_EQ(importError(write(QStringLiteral("me.png"), png)), Error::writeFailed());
}

TEST_F(AvatarStorageTest, TheFolderThatCannotBeMadeIsTheSystemsError) {
    write(QStringLiteral("Tolmi"), "a file");
    EXPECT_THROW(import(QStringLiteral("me.png"), png), SystemError);
}

TEST_F(AvatarStorageTest, LinksInItsOwnFolderAreReplacedAndNotFollowed) {
    import(QStringLiteral("me.png"), png);
    const FileURL outside = write(QStringLiteral("outside"), "mine");
    for (const QString &target : { outside.path(), at(QStringLiteral("new")) }) {
        for (const QString &name : stored()) {
            const QString path = storage.rootDirectoryURL().appendingPathComponent(name).path();
            ASSERT_TRUE(QFile::remove(path));
            ASSERT_TRUE(QFile::link(target, path));
        }
        import(QStringLiteral("me.png"), png);
    }
    EXPECT_EQ(contentOf(outside.path()), "mine");
    EXPECT_FALSE(QFile::exists(at(QStringLiteral("new"))));
}

TEST_F(AvatarStorageTest, PathsThatLeadOutAreNeverResolved) {
    import(QStringLiteral("me.png"), png);
    write(QStringLiteral("outside"), "mine");
    for (const QString &path : { QString(), QStringLiteral("../outside"), at(QStringLiteral("outside")),
             QStringLiteral("profile/../../outside"), QStringLiteral("profile/..") })
        EXPECT_EQ(storage.resolveURL(path), std::nullopt) << path.toStdString();
    EXPECT_EQ(storage.resolveURL(std::nullopt), std::nullopt);
    EXPECT_EQ(storage.resolveURL(QStringLiteral("profile/nothing")), std::nullopt);
    EXPECT_EQ(storage.resolveURL(QStringLiteral("profile/avatar-thumb.jpg")),
        FileURL(at(QStringLiteral("Tolmi/profile/avatar-thumb.jpg"))));
}

TEST_F(AvatarStorageTest, RemovesWhatIsThere) {
    const ProfileAvatarImportResult result = import(QStringLiteral("me.png"), png);
    storage.removeAvatarFiles(std::nullopt, result.thumbnailRelativePath);
    EXPECT_EQ(stored(), QStringList { QStringLiteral("avatar-original.png") });
    storage.removeAvatarFiles(result.imageRelativePath, result.thumbnailRelativePath);
    EXPECT_EQ(stored(), QStringList());
    EXPECT_NO_THROW(storage.removeAvatarFiles(std::nullopt, std::nullopt));
}

TEST_F(AvatarStorageTest, RemovesNothingOutside) {
    const FileURL outside = write(QStringLiteral("outside"), "mine");
    import(QStringLiteral("me.png"), png);
    storage.removeAvatarFiles(QStringLiteral("../outside"), outside.path());
    EXPECT_TRUE(QFile::exists(outside.path()));
}

TEST_F(AvatarStorageTest, WhatCannotBeRemovedIsTheSystemsError) {
    QDir(m_folder.path()).mkpath(QStringLiteral("Tolmi/profile/avatar-original.png"));
    EXPECT_THROW(
        storage.removeAvatarFiles(QStringLiteral("profile/avatar-original.png"), std::nullopt), SystemError);
}

namespace {

/// The platform in memory, to see the order of things and to let each of them fail.
class AvatarStorageOrderTest : public testing::Test {
protected:
    AvatarStorageOrderTest() {
        put(source, Pictures::file(Pictures::plain({ 4, 4 }, Qt::red), "PNG"));
        put(FileURL(root + QStringLiteral("/avatar-original.jpg")), "old");
        put(FileURL(root + QStringLiteral("/avatar-original.png")), "older");
        put(FileURL(root + QStringLiteral("/avatar-thumb.jpg")), "small");
    }
    void put(const FileURL &url, const QByteArray &content) {
        files.files[url.path()] = content;
        listing.items.push_back({ url, { .isRegularFile = true, .size = content.size() } });
    }
    std::optional<Error> importError() {
        return errorOf([this] { storage.importAvatar(source); });
    }
    std::vector<QString> inRoot(const QStringList &names) const {
        std::vector<QString> paths;
        for (const QString &name : names)
            paths.push_back(root + u'/' + name);
        return paths;
    }

    const QString root = QStringLiteral("/home/user/.local/share/Tolmi/profile");
    const FileURL source { QStringLiteral("/home/user/me.png") };
    const SystemError full { QStringLiteral("No space left on device: x") };
    FakeFileManager files;
    FakeFileListing listing;
    FakeAtomicFileWriter writer;
    ProfileAvatarStorage storage { { files, listing, writer } };
};

} // namespace

TEST_F(AvatarStorageOrderTest, OldFilesGoBeforeNewOnesCome) {
    int removedAtFirstWrite = -1;
    writer.whileWriting = [&] {
        if (removedAtFirstWrite < 0)
            removedAtFirstWrite = int(listing.removals.size());
    };
    EXPECT_EQ(importError(), std::nullopt);
    EXPECT_EQ(listing.removals,
        inRoot({ QStringLiteral("avatar-original.jpg"), QStringLiteral("avatar-original.png"),
            QStringLiteral("avatar-thumb.jpg") }));
    EXPECT_EQ(removedAtFirstWrite, 3);
    ASSERT_EQ(writer.writes.size(), 2u);
    EXPECT_EQ(writer.writes[0].path, root + QStringLiteral("/avatar-original.png"));
    EXPECT_EQ(writer.writes[0].content, files.files.at(source.path()));
    EXPECT_EQ(writer.writes[1].path, root + QStringLiteral("/avatar-thumb.jpg"));
    EXPECT_EQ(writer.writes[1].privacy, FilePrivacy::Private);
}

TEST_F(AvatarStorageOrderTest, AFileThatCannotBeRemovedIsAFailedWrite) {
    for (const QString &path : inRoot({ QStringLiteral("avatar-original.jpg"),
             QStringLiteral("avatar-original.png"), QStringLiteral("avatar-thumb.jpg") })) {
        listing.unremovable = { path };
        EXPECT_EQ(importError(), Error::writeFailed()) << path.toStdString();
    }
    EXPECT_TRUE(writer.writes.empty());
}

TEST_F(AvatarStorageOrderTest, AFolderThatCannotBeListedCountsAsEmpty) {
    listing.unlistable = { root };
    EXPECT_EQ(importError(), std::nullopt);
    EXPECT_EQ(listing.removals,
        inRoot({ QStringLiteral("avatar-original.png"), QStringLiteral("avatar-thumb.jpg") }));
}

TEST_F(AvatarStorageOrderTest, AFullDiskIsAFailedWrite) {
    writer.failures = { full };
    EXPECT_EQ(importError(), Error::writeFailed());
    EXPECT_TRUE(writer.writes.empty());
    EXPECT_EQ(importError(), std::nullopt);
}

TEST_F(AvatarStorageOrderTest, ASourceThatCannotBeReadIsAFailedWrite) {
    files.contentsFailures = { SystemError::fromErrno(EIO, source.path()) };
    EXPECT_EQ(importError(), Error::writeFailed());
}

TEST_F(AvatarStorageOrderTest, ASizeThatCannotBeReadPassesTheCheck) {
    listing.unreadable = { source.path() };
    // The copy fails then.
    EXPECT_EQ(importError(), Error::writeFailed());
}

TEST_F(AvatarStorageOrderTest, TheFolderComesFirst) {
    files.createDirectoryFailures = { full };
    EXPECT_THROW(storage.importAvatar(source), SystemError);
    EXPECT_TRUE(listing.removals.empty());
}

TEST_F(AvatarStorageOrderTest, WithoutAnApplicationSupportFolderTheTemporaryOneIsUsed) {
    files.applicationSupport.reset();
    const ProfileAvatarStorage temporary({ files, listing, writer });
    EXPECT_EQ(temporary.rootDirectoryURL().path(), u"/run/user/1000/Tolmi/profile");
}

TEST(ProfileAvatarStorageError, EveryCaseHasItsText) {
    EXPECT_EQ(
        Error::fileTooLarge(10).errorDescription(), u"This file is too large. Choose an image under 10MB.");
    EXPECT_EQ(Error::unsupportedType().errorDescription(), u"Only image files are supported.");
    EXPECT_EQ(Error::decodeFailed().errorDescription(), u"The selected image could not be processed.");
    EXPECT_EQ(Error::writeFailed().errorDescription(), u"Tolmi could not save the selected avatar.");
}
