#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/FakeFileManager.h"
#include "Support/SystemErrorOf.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
/// An implementation under test, and how to create items under its root.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    virtual FileManager &manager() = 0;
    virtual FileURL root() const = 0;
    virtual void write(const QString &path, const QByteArray &content, bool isExecutable) = 0;
    /// Makes the path world-writable.
    virtual void open(const QString &path) = 0;
};

class FakeFileSystem final : public FileSystem {
public:
    FileManager &manager() override { return m_manager; }
    FileURL root() const override { return FileURL(QStringLiteral("/")); }
    void write(const QString &path, const QByteArray &content, bool isExecutable) override {
        m_manager.files[path] = content;
        if (isExecutable)
            m_manager.executables.insert(path);
    }
    void open(const QString &path) override { m_manager.opened.insert(path); }

private:
    FakeFileManager m_manager;
};

class RealFileSystem final : public FileSystem {
public:
    FileManager &manager() override { return m_manager; }
    FileURL root() const override { return FileURL(m_folder.path()); }
    void write(const QString &path, const QByteArray &content, bool isExecutable) override {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
        const auto executable = isExecutable ? QFile::ExeOwner : QFile::Permission {};
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | executable));
    }
    void open(const QString &path) override {
        ASSERT_TRUE(QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOther));
    }

private:
    QTemporaryDir m_folder;
    LinuxFileManager m_manager { { QDir::homePath(), {}, {}, m_folder.path() } };
};

using MakeFileSystem = std::unique_ptr<FileSystem> (*)();

template <typename Kind>
std::unique_ptr<FileSystem> make() {
    return std::make_unique<Kind>();
}

class FileManagerContract : public testing::TestWithParam<MakeFileSystem> {
protected:
    FileURL at(const char *name) const {
        return m_system->root().appendingPathComponent(QString::fromUtf8(name));
    }
    FileManager &manager() { return m_system->manager(); }
    void write(const char *name, const QByteArray &content, bool isExecutable = false) {
        m_system->write(at(name).path(), content, isExecutable);
    }
    void open(const char *name) { m_system->open(at(name).path()); }

private:
    std::unique_ptr<FileSystem> m_system = GetParam()();
};

INSTANTIATE_TEST_SUITE_P(Kinds, FileManagerContract,
    testing::Values(&make<FakeFileSystem>, &make<RealFileSystem>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Linux"; });

TEST_P(FileManagerContract, SeesFilesAndFolders) {
    write("file", "text");
    manager().createDirectory(at("folder"));
    EXPECT_TRUE(manager().fileExists(at("file").path()));
    EXPECT_TRUE(manager().fileExists(at("folder").path()));
    EXPECT_FALSE(manager().fileExists(at("nothing").path()));
    EXPECT_FALSE(manager().fileExists(QString()));
}

TEST_P(FileManagerContract, ReportsWhatIsExecutable) {
    write("program", "", true);
    write("text", "");
    manager().createDirectory(at("folder"));
    EXPECT_TRUE(manager().isExecutableFile(at("program").path()));
    EXPECT_TRUE(manager().isExecutableFile(at("folder").path()));
    EXPECT_FALSE(manager().isExecutableFile(at("nothing").path()));
}

TEST_P(FileManagerContract, ReportsWhatIsSafeFromOthers) {
    write("file", "");
    EXPECT_TRUE(manager().isSafeFromOthers(at("file").path()));
    open("file");
    EXPECT_FALSE(manager().isSafeFromOthers(at("file").path()));
}

TEST_P(FileManagerContract, CreatesMissingParents) {
    manager().createDirectory(at("a/b/c"));
    EXPECT_TRUE(manager().fileExists(at("a").path()));
    EXPECT_TRUE(manager().fileExists(at("a/b").path()));
    EXPECT_TRUE(manager().fileExists(at("a/b/c").path()));
}

TEST_P(FileManagerContract, AnExistingFolderIsSuccess) {
    manager().createDirectory(at("a"));
    EXPECT_NO_THROW(manager().createDirectory(at("a")));
}

TEST_P(FileManagerContract, AFileInsteadOfAFolderIsAnError) {
    write("file", "");
    EXPECT_EQ(systemErrorOf([this] { manager().createDirectory(at("file")); }),
        QStringLiteral("File exists: ") + at("file").path());
    EXPECT_EQ(systemErrorOf([this] { manager().createDirectory(at("file/a")); }),
        QStringLiteral("Not a directory: ") + at("file/a").path());
}

TEST_P(FileManagerContract, TheEmptyPathIsNoFolder) {
    EXPECT_EQ(systemErrorOf([this] { manager().createDirectory(FileURL()); }),
        QStringLiteral("No such file or directory: "));
}

TEST_P(FileManagerContract, ReturnsTheWholeContent) {
    const QByteArray large(200'000, '\0');
    write("large", large);
    write("empty", "");
    EXPECT_EQ(manager().contents(at("large")), large);
    EXPECT_EQ(manager().contents(at("empty")), QByteArray());
}

TEST_P(FileManagerContract, ReadingANonFileIsAnError) {
    manager().createDirectory(at("folder"));
    EXPECT_EQ(systemErrorOf([this] { manager().contents(at("nothing")); }),
        QStringLiteral("No such file or directory: ") + at("nothing").path());
    EXPECT_EQ(systemErrorOf([this] { manager().contents(at("folder")); }),
        QStringLiteral("Is a directory: ") + at("folder").path());
}

TEST_P(FileManagerContract, NamesItsFolders) {
    EXPECT_TRUE(manager().applicationSupportDirectory().has_value());
    EXPECT_FALSE(manager().temporaryDirectory().path().isEmpty());
    EXPECT_FALSE(manager().currentDirectory().path().isEmpty());
}
} // namespace
