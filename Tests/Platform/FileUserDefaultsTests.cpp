#include "Platform/Desktop/FileUserDefaults.h"

#include "Platform/Desktop/DefaultsFormat.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileManager.h"
#include "Support/Print.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <future>

namespace {
const QString key = QStringLiteral("tolmi.key");

/// Settings in a real file.
class FileUserDefaultsTest : public testing::Test {
protected:
    std::unique_ptr<FileUserDefaults> open() {
        return std::make_unique<FileUserDefaults>(FileURL(path), files, writer);
    }

    void put(const QByteArray &content) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray content(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
    }

    QString names() const {
        return QFileInfo(path)
            .dir()
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
            .join(u' ');
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("config/Tolmi/settings.json"));
    LinuxFileManager files;
    LinuxAtomicFileWriter writer;
};

/// Settings in an in-memory file system, for cases that cannot be provoked reliably on a real one.
class FileUserDefaultsInMemoryTest : public testing::Test {
protected:
    const FileURL fileURL { QStringLiteral("/home/user/.config/Tolmi/settings.json") };
    FakeFileManager files;
    FakeAtomicFileWriter writer;
};
} // namespace

TEST_F(FileUserDefaultsTest, KeepsValuesAcrossARestart) {
    const std::map<QString, DefaultsValue> values {
        { QStringLiteral("a"), qint64(1) },
        { QStringLiteral("b"), 1.0 },
        { QStringLiteral("c"), true },
        { QStringLiteral("d"), QStringLiteral("1") },
    };
    for (const auto &[name, value] : values)
        open()->set(name, value);
    const auto again = open();
    for (const auto &[name, value] : values)
        EXPECT_EQ(again->object(name), value) << name.toStdString();
    again->removeObject(QStringLiteral("a"));
    again->set(QStringLiteral("b"), qint64(1));
    EXPECT_EQ(again->object(QStringLiteral("b")), DefaultsValue(qint64(1)));
}

TEST_F(FileUserDefaultsTest, ARemovedValueStaysRemovedAcrossARestart) {
    open()->set(key, true);
    open()->removeObject(key);
    EXPECT_EQ(open()->object(key), std::nullopt);
}

TEST_F(FileUserDefaultsTest, IsPrivate) {
    open()->set(key, true);
    EXPECT_EQ(names(), u"settings.json");
    EXPECT_EQ(
        QFile::permissions(path), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
    const auto userOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser
        | QFile::WriteUser | QFile::ExeUser;
    EXPECT_EQ(QFile::permissions(QFileInfo(path).path()), userOnly);
}

TEST_F(FileUserDefaultsTest, WritesNothingUntilSomethingChanges) {
    open();
    EXPECT_FALSE(QFile::exists(QFileInfo(path).path()));
    put("{\"tolmi.key\":true}");
    open()->set(key, true);
    EXPECT_EQ(content(path), "{\"tolmi.key\":true}");
}

TEST_F(FileUserDefaultsTest, SetsAnUnreadableFileAside) {
    const QByteArray broken[] { "{\"tolmi.key\":", "[true]", "",
        QByteArray("\x7F"
                   "ELF\0\0\x01",
            7),
        QByteArray(1 << 20, '{') };
    int number = 0;
    for (const QByteArray &bytes : broken) {
        put(bytes);
        const auto defaults = open();
        EXPECT_EQ(defaults->object(key), std::nullopt);
        EXPECT_EQ(content(path + QStringLiteral(".unreadable-%1").arg(++number)), bytes);
        defaults->set(key, qint64(number));
    }
    EXPECT_EQ(open()->object(key), DefaultsValue(qint64(number)));
    EXPECT_EQ(content(path + QStringLiteral(".unreadable-1")), broken[0]);
}

TEST_F(FileUserDefaultsTest, KeepsTheReadableValues) {
    const QByteArray mixed = "{\"tolmi.key\":2,\"tolmi.list\":[1],\"tolmi.null\":null}";
    put(mixed);
    EXPECT_EQ(open()->object(key), DefaultsValue(qint64(2)));
    EXPECT_EQ(content(path + QStringLiteral(".unreadable-1")), mixed);
    EXPECT_EQ(open()->object(key), DefaultsValue(qint64(2)));
    EXPECT_EQ(names(), u"settings.json settings.json.unreadable-1");
}

TEST_F(FileUserDefaultsTest, SetsAFolderAtItsPathAside) {
    QDir().mkpath(path + QStringLiteral("/inner"));
    open()->set(key, true);
    EXPECT_EQ(open()->object(key), DefaultsValue(true));
    EXPECT_TRUE(QFileInfo(path + QStringLiteral(".unreadable-1/inner")).isDir());
}

TEST_F(FileUserDefaultsTest, FollowsSymbolicLinks) {
    put("{}");
    const QString real = folder.filePath(QStringLiteral("real.json"));
    ASSERT_TRUE(QFile::rename(path, real));
    ASSERT_TRUE(QFile::link(real, path));
    open()->set(key, true);
    EXPECT_EQ(parsedDefaults(content(real)).values.count(key), 1u);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}

TEST_F(FileUserDefaultsTest, KeepsWorkingWithoutWriteAccess) {
    QFile blocker(folder.filePath(QStringLiteral("config")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    const auto defaults = open();
    defaults->set(key, true);
    EXPECT_EQ(defaults->object(key), DefaultsValue(true));
}

TEST_F(FileUserDefaultsTest, WritesTheLastOfManyValues) {
    {
        const auto defaults = open();
        for (qint64 step = 1; step <= 20000; ++step)
            defaults->set(key, step);
    }
    EXPECT_EQ(open()->object(key), DefaultsValue(qint64(20000)));
}

TEST_F(FileUserDefaultsInMemoryTest, CoalescesChangesDuringAWrite) {
    std::promise<void> begun;
    std::promise<void> mayGoOn;
    auto defaults = std::make_unique<FileUserDefaults>(fileURL, files, writer);
    writer.whileWriting = [&, isFirst = true]() mutable {
        if (std::exchange(isFirst, false)) {
            begun.set_value();
            mayGoOn.get_future().wait();
        }
    };
    defaults->set(key, qint64(0));
    begun.get_future().wait();
    for (qint64 step = 1; step <= 100; ++step)
        defaults->set(key, step);
    mayGoOn.set_value();
    defaults.reset();
    ASSERT_EQ(writer.writes.size(), 2u);
    EXPECT_EQ(parsedDefaults(writer.writes[0].content).values.at(key), DefaultsValue(qint64(0)));
    EXPECT_EQ(parsedDefaults(writer.writes[1].content).values.at(key), DefaultsValue(qint64(100)));
    EXPECT_EQ(writer.writes[1].privacy, FilePrivacy::Private);
    EXPECT_EQ(writer.writes[1].path, fileURL.path());
}

TEST_F(FileUserDefaultsInMemoryTest, HasWrittenEverythingAfterAFlush) {
    FileUserDefaults defaults(fileURL, files, writer);
    defaults.set(key, qint64(1));
    defaults.flush();
    ASSERT_FALSE(writer.writes.empty());
    EXPECT_EQ(writer.writes.back().content, jsonOfDefaults({ { key, qint64(1) } }));
}

TEST_F(FileUserDefaultsInMemoryTest, TriesAgainWithTheNextWrite) {
    const SystemError full = SystemError::fromErrno(ENOSPC, fileURL.path());
    writer.failures = { full, full };
    std::promise<void> tried;
    writer.whileWriting = [&, count = 0]() mutable {
        if (++count == 2)
            tried.set_value();
    };
    auto defaults = std::make_unique<FileUserDefaults>(fileURL, files, writer);
    testing::internal::CaptureStderr();
    defaults->set(key, true);
    // The store learns the outcome of the first write only after it ended, so equal values are set until the
    // second write.
    const auto secondWrite = tried.get_future();
    while (secondWrite.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        defaults->set(key, true);
    defaults->set(key, false);
    defaults.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Tolmi: the settings were not saved: No space left on device: "
        "/home/user/.config/Tolmi/settings.json\n");
    ASSERT_FALSE(writer.writes.empty());
    EXPECT_EQ(parsedDefaults(writer.writes.back().content).values.at(key), DefaultsValue(false));
}

TEST_F(FileUserDefaultsInMemoryTest, KeepsAnUnreadableFileThatCannotBeSetAside) {
    files.files[fileURL.path()] = "{\"tolmi.key\":true}";
    files.contentsFailures = { SystemError::fromErrno(EACCES, fileURL.path()) };
    testing::internal::CaptureStderr();
    {
        FileUserDefaults defaults(fileURL, files, writer);
        EXPECT_EQ(defaults.object(key), std::nullopt);
        defaults.set(key, false);
        EXPECT_EQ(defaults.object(key), DefaultsValue(false));
    }
    EXPECT_TRUE(writer.writes.empty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Tolmi: the settings cannot be read: Permission denied: /home/user/.config/Tolmi/settings.json\n"
        "Tolmi: the settings file was not understood and stays; settings are not saved\n");
}
