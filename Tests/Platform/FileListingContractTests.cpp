#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Support/FakeFileListing.h"
#include "Support/Print.h"
#include "Support/SystemErrorOf.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
/// An implementation under test, and how to put files under its root.
class ListedFolder {
public:
    virtual ~ListedFolder() = default;
    virtual FileListing &listing() = 0;
    virtual FileURL root() const = 0;
    virtual void addFile(const FileURL &url, qint64 size, Date modifiedAt) = 0;
    virtual void addFolder(const FileURL &url) = 0;
};

class FakeListedFolder final : public ListedFolder {
public:
    FileListing &listing() override { return m_listing; }
    FileURL root() const override { return FileURL(QStringLiteral("/cache")); }
    void addFile(const FileURL &url, qint64 size, Date modifiedAt) override {
        m_listing.items.push_back({ url, { true, size, modifiedAt } });
    }
    void addFolder(const FileURL &url) override { m_listing.items.push_back({ url, {} }); }

private:
    FakeFileListing m_listing;
};

class RealListedFolder final : public ListedFolder {
public:
    FileListing &listing() override { return m_listing; }
    FileURL root() const override { return FileURL(m_folder.path()); }
    void addFile(const FileURL &url, qint64 size, Date modifiedAt) override {
        QFile file(url.path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(size));
        const auto milliseconds = qint64(modifiedAt.secondsSince1970() * 1000);
        ASSERT_TRUE(file.setFileTime(
            QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC), QFileDevice::FileModificationTime));
    }
    void addFolder(const FileURL &url) override { ASSERT_TRUE(QDir().mkdir(url.path())); }

private:
    QTemporaryDir m_folder;
    LinuxFileListing m_listing;
};

using MakeListedFolder = std::unique_ptr<ListedFolder> (*)();

template <typename Kind>
std::unique_ptr<ListedFolder> make() {
    return std::make_unique<Kind>();
}

class FileListingContract : public testing::TestWithParam<MakeListedFolder> {
protected:
    static constexpr Date someDay = Date::fromSecondsSince1970(1700000000.5);

    FileURL at(const char *name) const {
        return m_folder->root().appendingPathComponent(QString::fromUtf8(name));
    }
    FileURL addFile(const char *name, qint64 size = 0) {
        m_folder->addFile(at(name), size, someDay);
        return at(name);
    }
    FileURL addFolder(const char *name) {
        m_folder->addFolder(at(name));
        return at(name);
    }
    FileListing &listing() { return m_folder->listing(); }
    FileURL root() const { return m_folder->root(); }

    QStringList listedNames() {
        QStringList names;
        for (const FileURL &url : listing().contentsOfDirectory(root()))
            names += url.lastPathComponent();
        names.sort();
        return names;
    }

private:
    std::unique_ptr<ListedFolder> m_folder = GetParam()();
};

INSTANTIATE_TEST_SUITE_P(Kinds, FileListingContract,
    testing::Values(&make<FakeListedFolder>, &make<RealListedFolder>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Linux"; });
} // namespace

TEST_P(FileListingContract, ListsVisibleDirectEntries) {
    EXPECT_EQ(listedNames(), QStringList());
    addFile("b.wav");
    addFile(".hidden");
    addFile("ș a.txt");
    addFolder("inner");
    addFile("inner/deep.wav");
    const QStringList expected { QStringLiteral("b.wav"), QStringLiteral("inner"),
        QStringLiteral("ș a.txt") };
    EXPECT_EQ(listedNames(), expected);
}

TEST_P(FileListingContract, ReturnsFullPaths) {
    const FileURL file = addFile("a.wav");
    EXPECT_EQ(listing().contentsOfDirectory(root()), std::vector { file });
}

TEST_P(FileListingContract, ReportsSizeAndTimeOfAFile) {
    const FileAttributes attributes = listing().attributes(addFile("a.wav", 12345));
    EXPECT_TRUE(attributes.isRegularFile);
    EXPECT_EQ(attributes.size, 12345);
    EXPECT_NEAR(attributes.modifiedAt - someDay, 0, 1e-6);
}

TEST_P(FileListingContract, AFolderIsNotARegularFile) {
    EXPECT_FALSE(listing().attributes(addFolder("inner")).isRegularFile);
}

TEST_P(FileListingContract, ANonLinkIsItsOwnTarget) {
    const FileURL file = addFile("a.wav", 12345);
    EXPECT_EQ(listing().attributesOfTarget(file), listing().attributes(file));
    EXPECT_FALSE(listing().attributesOfTarget(addFolder("inner")).isRegularFile);
}

TEST_P(FileListingContract, RemovesAFile) {
    const FileURL file = addFile("a.wav");
    addFile("b.wav");
    listing().removeItem(file);
    EXPECT_EQ(listedNames(), QStringList(QStringLiteral("b.wav")));
}

TEST_P(FileListingContract, AMissingItemIsAnError) {
    const QString expected = QStringLiteral("No such file or directory: ") + at("nothing").path();
    EXPECT_EQ(systemErrorOf([this] { listing().attributes(at("nothing")); }), expected);
    EXPECT_EQ(systemErrorOf([this] { listing().attributesOfTarget(at("nothing")); }), expected);
    EXPECT_EQ(systemErrorOf([this] { listing().removeItem(at("nothing")); }), expected);
}

namespace {
class LinuxFileListingTest : public testing::Test {
protected:
    FileURL at(const char *name) const { return FileURL(m_folder.filePath(QString::fromUtf8(name))); }

    LinuxFileListing m_listing;

private:
    QTemporaryDir m_folder;
};
} // namespace

TEST_F(LinuxFileListingTest, AMissingFolderCannotBeListed) {
    EXPECT_EQ(systemErrorOf([this] { m_listing.contentsOfDirectory(at("nothing")); }),
        QStringLiteral("No such file or directory: ") + at("nothing").path());
}

TEST_F(LinuxFileListingTest, AFolderIsNotRemoved) {
    ASSERT_TRUE(QDir().mkdir(at("inner").path()));
    EXPECT_NE(systemErrorOf([this] { m_listing.removeItem(at("inner")); }), u"no error");
    EXPECT_TRUE(QFile::exists(at("inner").path()));
}

TEST_F(LinuxFileListingTest, ALinkIsNotARegularFileAndIsRemovedAlone) {
    QFile target(at("target").path());
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(target.fileName(), at("link").path()));
    EXPECT_FALSE(m_listing.attributes(at("link")).isRegularFile);
    EXPECT_TRUE(m_listing.attributesOfTarget(at("link")).isRegularFile);
    m_listing.removeItem(at("link"));
    EXPECT_TRUE(target.exists());
    EXPECT_FALSE(QFile::exists(at("link").path()));
}
