#include "Foundation/Error.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/FakeFileListing.h"
#include "Support/FakeFileManager.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Audio/AudioRetentionSweeper.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

void PrintTo(const AudioRetentionSweepResult &result, std::ostream *stream) {
    *stream << result.deletedFileCount << " files of " << result.deletedBytes << " bytes deleted, "
            << result.remainingBytes << " bytes left";
}

namespace {
constexpr qint64 megabyte = 1024 * 1024;
constexpr double hour = 3600;
constexpr qint64 greatest = std::numeric_limits<qint64>::max();

class AudioRetentionSweeperTest : public testing::Test {
protected:
    AudioRetentionSweeperTest() { m_fileManager.folders.insert(m_folder.path()); }

    FileURL at(const QString &name) const { return m_folder.appendingPathComponent(name); }

    void add(const QString &name, qint64 size, double hoursOld) {
        m_listing.items.push_back({ at(name), { true, size, m_clock.now() + -hoursOld * hour } });
    }

    AudioRetentionSweepResult sweep(qint64 retentionHours, qint64 maxSizeMB) {
        AudioRetentionSweeper sweeper(m_fileManager, m_listing, m_clock);
        return sweeper.sweep(m_folder, retentionHours, maxSizeMB);
    }

    /// Names of the files whose removal was tried, in order.
    QStringList removals() const {
        QStringList names;
        for (const QString &path : m_listing.removals)
            names += FileURL(path).lastPathComponent();
        return names;
    }

    FileURL m_folder { QStringLiteral("/home/user/.local/share/Tolmi/audio-cache") };
    FakeFileManager m_fileManager;
    FakeFileListing m_listing;
    VirtualClock m_clock;
};

using Result = AudioRetentionSweepResult;
const QString a = QStringLiteral("a.wav");
const QString b = QStringLiteral("b.wav");
const QString c = QStringLiteral("c.wav");
} // namespace

TEST_F(AudioRetentionSweeperTest, AMissingFolderIsNotAnError) {
    m_fileManager.folders.erase(m_folder.path());
    m_listing.unlistable.insert(m_folder.path());
    EXPECT_EQ(sweep(24, 2048), Result {});
}

TEST_F(AudioRetentionSweeperTest, AnEmptyFolderReturnsZeros) {
    EXPECT_EQ(sweep(24, 2048), Result {});
}

TEST_F(AudioRetentionSweeperTest, AListingThatFailsIsThrown) {
    add(a, 1, 100);
    m_listing.unlistable.insert(m_folder.path());
    EXPECT_THROW(sweep(1, 1), SystemError);
    EXPECT_EQ(removals(), QStringList());
}

TEST_F(AudioRetentionSweeperTest, RemovesWhatIsTooOldInListingOrder) {
    add(a, 10, 25);
    add(b, 20, 23);
    add(c, 30, 1000);
    EXPECT_EQ(sweep(24, 2048), (Result { 2, 40, 20 }));
    EXPECT_EQ(removals(), (QStringList { a, c }));
}

TEST_F(AudioRetentionSweeperTest, AFileExactlyAsOldAsTheCutOffStays) {
    add(a, 10, 24);
    m_listing.items.push_back({ at(b), { true, 20, m_clock.now() + (-24 * hour - 0.001) } });
    EXPECT_EQ(sweep(24, 2048), (Result { 1, 20, 10 }));
    EXPECT_EQ(removals(), QStringList(b));
}

TEST_F(AudioRetentionSweeperTest, HoursBelowOneCountAsOne) {
    for (const qint64 hours : { qint64(0), qint64(-5), std::numeric_limits<qint64>::min() }) {
        m_listing = {};
        add(a, 10, 0.9);
        add(b, 20, 1.1);
        EXPECT_EQ(sweep(hours, 2048), (Result { 1, 20, 10 })) << hours;
    }
}

TEST_F(AudioRetentionSweeperTest, MegabytesBelowOneCountAsOne) {
    for (const qint64 megabytes : { qint64(0), qint64(-5), std::numeric_limits<qint64>::min() }) {
        m_listing = {};
        add(a, megabyte, 0.2);
        add(b, 1, 0.1);
        EXPECT_EQ(sweep(24, megabytes), (Result { 1, megabyte, 1 })) << megabytes;
    }
}

TEST_F(AudioRetentionSweeperTest, ACacheOfExactlyTheLimitLosesNothing) {
    add(a, megabyte, 2);
    add(b, megabyte, 1);
    EXPECT_EQ(sweep(24, 2), (Result { 0, 0, 2 * megabyte }));
    EXPECT_EQ(removals(), QStringList());
}

TEST_F(AudioRetentionSweeperTest, OneByteMoreRemovesTheOldest) {
    add(a, megabyte, 1);
    add(b, megabyte, 2);
    add(c, 1, 0.5);
    EXPECT_EQ(sweep(24, 2), (Result { 1, megabyte, megabyte + 1 }));
    EXPECT_EQ(removals(), QStringList(b));
}

TEST_F(AudioRetentionSweeperTest, RemovesTheOldestUntilTheRestFits) {
    add(a, megabyte, 1);
    add(b, megabyte, 3);
    add(c, megabyte, 2);
    EXPECT_EQ(sweep(24, 1), (Result { 2, 2 * megabyte, megabyte }));
    EXPECT_EQ(removals(), (QStringList { b, c }));
}

TEST_F(AudioRetentionSweeperTest, AFileLargerThanTheLimitIsRemovedToo) {
    add(a, 5 * megabyte, 1);
    EXPECT_EQ(sweep(24, 1), (Result { 1, 5 * megabyte, 0 }));
}

TEST_F(AudioRetentionSweeperTest, WhatTheAgeRuleRemovedIsNotCountedAgain) {
    add(a, 3 * megabyte, 30);
    add(b, megabyte, 2);
    add(c, 1, 1);
    EXPECT_EQ(sweep(24, 1), (Result { 2, 4 * megabyte, 1 }));
    EXPECT_EQ(removals(), (QStringList { a, b }));
}

TEST_F(AudioRetentionSweeperTest, AnOldFileThatCannotBeRemovedCountsAsPresent) {
    add(a, megabyte, 30);
    add(b, 1, 31);
    m_listing.unremovable.insert(at(a).path());
    EXPECT_EQ(sweep(24, 1), (Result { 1, 1, megabyte }));
    EXPECT_EQ(removals(), (QStringList { a, b }));
}

TEST_F(AudioRetentionSweeperTest, IfTheOldestCannotBeRemovedTheNextOldestIs) {
    add(a, megabyte, 3);
    add(b, megabyte, 2);
    add(c, megabyte, 1);
    m_listing.unremovable.insert(at(a).path());
    EXPECT_EQ(sweep(24, 2), (Result { 1, megabyte, 2 * megabyte }));
    EXPECT_EQ(removals(), (QStringList { a, b }));
}

TEST_F(AudioRetentionSweeperTest, BothRulesTryAFileThatCannotBeRemoved) {
    add(a, 2 * megabyte, 30);
    add(b, 1, 1);
    m_listing.unremovable.insert(at(a).path());
    EXPECT_EQ(sweep(24, 1), (Result { 1, 1, 2 * megabyte }));
    EXPECT_EQ(removals(), (QStringList { a, a, b }));
}

TEST_F(AudioRetentionSweeperTest, AFileThatCannotBeReadIsInvisible) {
    add(a, 3 * megabyte, 30);
    add(b, 1, 30);
    m_listing.unreadable.insert(at(a).path());
    EXPECT_EQ(sweep(24, 1), (Result { 1, 1, 0 }));
    EXPECT_EQ(removals(), QStringList(b));
}

TEST_F(AudioRetentionSweeperTest, OnlyRegularVisibleFilesOfTheFolderCount) {
    add(QStringLiteral(".hidden"), 3 * megabyte, 30);
    add(QStringLiteral("inner/deep.wav"), 3 * megabyte, 30);
    m_listing.items.push_back({ at(QStringLiteral("inner")), { false, 4096, { 0 } } });
    add(QStringLiteral("notes.txt"), 7, 30);
    EXPECT_EQ(sweep(24, 1), (Result { 1, 7, 0 }));
    EXPECT_EQ(removals(), QStringList(QStringLiteral("notes.txt")));
}

TEST_F(AudioRetentionSweeperTest, AFileFromTheFutureIsTheNewest) {
    add(a, megabyte, -100);
    add(b, megabyte, 1);
    EXPECT_EQ(sweep(1, 1), (Result { 1, megabyte, megabyte }));
    EXPECT_EQ(removals(), QStringList(b));
}

TEST_F(AudioRetentionSweeperTest, AcceptsTheLargestNumbersInRange) {
    add(a, 10, 1e6);
    EXPECT_EQ(sweep(greatest / 3600, greatest / megabyte), (Result { 0, 0, 10 }));
}

TEST_F(AudioRetentionSweeperTest, ANumberOutOfRangeAborts) {
    const char *message = "Tolmi: a number of the audio retention sweep is too large\n";
    EXPECT_DEATH(sweep(greatest / 3600 + 1, 1), message);
    EXPECT_DEATH(sweep(1, greatest / megabyte + 1), message);
    add(a, greatest, 0);
    add(b, 1, 0);
    EXPECT_DEATH(sweep(1, 1), message);
}

namespace {
/// Sweeps of a real folder.
class AudioRetentionSweeperOnDisk : public testing::Test {
protected:
    void add(const QString &name, qint64 size, double hoursOld) {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(size));
        const double modifiedAt = m_clock.now().secondsSince1970() - hoursOld * hour;
        ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(qint64(modifiedAt * 1000), Qt::UTC),
            QFileDevice::FileModificationTime));
    }

    AudioRetentionSweepResult sweep(const QString &path, qint64 retentionHours, qint64 maxSizeMB) {
        const LinuxFileManager fileManager({ QDir::homePath(), {}, {}, m_folder.path() });
        LinuxFileListing listing;
        return AudioRetentionSweeper(fileManager, listing, m_clock)
            .sweep(FileURL(path), retentionHours, maxSizeMB);
    }

    QTemporaryDir m_folder;
    VirtualClock m_clock;
};
} // namespace

TEST_F(AudioRetentionSweeperOnDisk, RemovesByAgeThenBySize) {
    const QString cache = m_folder.filePath(QStringLiteral("cache"));
    ASSERT_TRUE(QDir().mkdir(cache));
    add(QStringLiteral("cache/old.wav"), 100, 25);
    add(QStringLiteral("cache/exact.txt"), megabyte, 24);
    add(QStringLiteral("cache/middle.wav"), megabyte, 12);
    add(QStringLiteral("cache/new.wav"), megabyte, 0);
    add(QStringLiteral("cache/.hidden"), megabyte, 1000);
    ASSERT_TRUE(QDir().mkdir(cache + QStringLiteral("/inner")));
    ASSERT_TRUE(QFile::link(cache + QStringLiteral("/new.wav"), cache + QStringLiteral("/link.wav")));
    EXPECT_EQ(sweep(cache, 24, 2), (Result { 2, 100 + megabyte, 2 * megabyte }));
    const QStringList left = QDir(cache).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    EXPECT_EQ(left,
        (QStringList { QStringLiteral(".hidden"), QStringLiteral("inner"), QStringLiteral("link.wav"),
            QStringLiteral("middle.wav"), QStringLiteral("new.wav") }));
    EXPECT_EQ(sweep(cache, 24, 2), (Result { 0, 0, 2 * megabyte }));
}

TEST_F(AudioRetentionSweeperOnDisk, AMissingFolderIsNotAnError) {
    EXPECT_EQ(sweep(m_folder.filePath(QStringLiteral("nothing")), 24, 2), Result {});
}

TEST_F(AudioRetentionSweeperOnDisk, AFileInsteadOfTheFolderIsAnError) {
    add(a, 1, 0);
    EXPECT_THROW(sweep(m_folder.filePath(a), 24, 2), SystemError);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(a)));
}
