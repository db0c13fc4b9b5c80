#include "TolmiApp/History/TranscriptionHistory.h"

#include "App/History/HistoryEntries.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileManager.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <condition_variable>
#include <limits>
#include <mutex>

#include <sys/stat.h>

namespace {
const QString folder = QStringLiteral("/home/user/.local/share/Tolmi");
const QString file = QStringLiteral("/home/user/.local/share/Tolmi/history.json");

FinishedDictation dictation(const QString &text) {
    return { .rawText = text, .refinedText = text.toUpper(), .language = QStringLiteral("ro") };
}

class TranscriptionHistoryTest : public testing::Test {
protected:
    std::shared_ptr<TranscriptionHistory> start() {
        auto history = std::make_shared<TranscriptionHistory>(m_clock, m_fileManager, m_writer);
        m_latest = history;
        return history;
    }

    /// A history that finds `content` in its file.
    std::shared_ptr<TranscriptionHistory> startWith(const QByteArray &content) {
        m_fileManager.files[file] = content;
        return start();
    }

    /// A history of the entries "0", "1", ..., the last one in front, with an hour between them.
    std::shared_ptr<TranscriptionHistory> startWithEntries(int count) {
        auto history = start();
        for (int index = 0; index < count; ++index) {
            history->add(dictation(QString::number(index)));
            m_clock.shift(3600);
        }
        writes();
        m_writer.writes.clear();
        return history;
    }

    /// Every write of the history that was started last.
    const std::vector<FakeAtomicFileWriter::Write> &writes() {
        if (const auto history = m_latest.lock())
            history->waitUntilWritten();
        return m_writer.writes;
    }

    /// What the file holds after the last write.
    QByteArray written() { return writes().empty() ? "no file" : writes().back().content; }

    static QStringList textsOf(const QList<HistoryEntry> &entries) {
        QStringList texts;
        for (const HistoryEntry &entry : entries)
            texts += entry.rawText;
        return texts;
    }

    static QStringList texts(std::initializer_list<int> numbers) {
        QStringList texts;
        for (const int number : numbers)
            texts += QString::number(number);
        return texts;
    }

    VirtualClock m_clock;
    FakeFileManager m_fileManager;
    FakeAtomicFileWriter m_writer;

private:
    std::weak_ptr<TranscriptionHistory> m_latest;
};
} // namespace

TEST_F(TranscriptionHistoryTest, KeepsItsFileInTheApplicationFolder) {
    const auto history = start();
    EXPECT_EQ(history->storageURL().path(), file);
    EXPECT_EQ(m_fileManager.folders.count(folder), 1U);
    EXPECT_EQ(m_writer.sweptFolders, std::vector { folder });
    EXPECT_TRUE(history->entries().isEmpty());
    EXPECT_TRUE(writes().empty());
}

TEST_F(TranscriptionHistoryTest, WithoutAnApplicationSupportFolderTheProgramEnds) {
    m_fileManager.applicationSupport.reset();
    EXPECT_DEATH(start(), "Tolmi: there is no application support folder for the history\n");
}

TEST_F(TranscriptionHistoryTest, AFolderThatCannotBeMadeIsNoFailure) {
    m_fileManager.createDirectoryFailures.push_back(SystemError::fromErrno(EACCES, folder));
    EXPECT_TRUE(start()->entries().isEmpty());
}

TEST_F(TranscriptionHistoryTest, ReadsTheEntriesInFileOrder) {
    HistoryEntry earlier = plainHistoryEntry();
    earlier.timestamp = { 1 };
    const QList<HistoryEntry> entries { earlier, fullHistoryEntry(), plainHistoryEntry() };
    EXPECT_EQ(startWith(HistoryCodec::encode(entries).value())->entries(), entries);
    EXPECT_TRUE(writes().empty());
}

TEST_F(TranscriptionHistoryTest, AnUnreadableFileIsAnEmptyHistory) {
    m_fileManager.contentsFailures.push_back(SystemError::fromErrno(EIO, file));
    EXPECT_TRUE(startWith(HistoryCodec::encode({ plainHistoryEntry() }).value())->entries().isEmpty());
}

TEST_F(TranscriptionHistoryTest, AMalformedFileStaysUntilTheNextChange) {
    QByteArray json = HistoryCodec::encode({ plainHistoryEntry(), plainHistoryEntry() }).value();
    json.replace(json.lastIndexOf("single"), 6, "triple");
    const auto history = startWith(json);
    EXPECT_TRUE(history->entries().isEmpty());
    EXPECT_TRUE(writes().empty());
    history->add(dictation(QStringLiteral("new")));
    EXPECT_EQ(textsOf(HistoryCodec::decode(written()).value()), QStringList(QStringLiteral("new")));
}

TEST_F(TranscriptionHistoryTest, AnEntryTakesEverythingFromTheDictation) {
    const HistoryEntry full = fullHistoryEntry();
    const auto history = start();
    history->add(
        { full.rawText, full.refinedText, full.language, full.durationSeconds, full.pasteTargetAppName,
            full.pasteTargetBundleID, full.pasteTimestamp, full.audioFileRelativePath, full.qualityPass });
    HistoryEntry expected = full;
    expected.id = history->entries().front().id;
    expected.timestamp = VirtualClock::start;
    expected.isPinned = false;
    EXPECT_EQ(history->entries(), QList { expected });
    EXPECT_FALSE(expected.id.isNull());
    EXPECT_EQ(writes().back(),
        (FakeAtomicFileWriter::Write {
            file, HistoryCodec::encode({ expected }).value(), FilePrivacy::Private }));
}

TEST_F(TranscriptionHistoryTest, ADictationWithoutATargetLeavesItsKeysOut) {
    start()->add(dictation(QStringLiteral("a")));
    EXPECT_FALSE(written().contains("pasteTarget"));
}

TEST_F(TranscriptionHistoryTest, NewEntriesStandInFront) {
    const auto history = startWithEntries(3);
    EXPECT_EQ(textsOf(history->entries()), texts({ 2, 1, 0 }));
    EXPECT_NE(history->entries()[0].id, history->entries()[1].id);
}

TEST_F(TranscriptionHistoryTest, EveryChangeWritesTheWholeHistory) {
    const auto history = startWith(HistoryCodec::encode({ fullHistoryEntry(), plainHistoryEntry() }).value());
    const auto isWritten = [&] { return written() == HistoryCodec::encode(history->entries()); };
    history->add(dictation(QStringLiteral("a")));
    EXPECT_TRUE(isWritten());
    history->add(dictation(QStringLiteral("b")));
    EXPECT_TRUE(isWritten());
    history->togglePin(history->entries()[1].id);
    EXPECT_TRUE(isWritten());
    history->add(dictation(QStringLiteral("c")));
    EXPECT_TRUE(isWritten());
    history->deleteEntry(history->entries()[1].id);
    EXPECT_TRUE(isWritten());
    history->clear();
    EXPECT_TRUE(isWritten());
    history->add(dictation(QStringLiteral("d")));
    EXPECT_TRUE(isWritten());
    EXPECT_EQ(writes().size(), 7U);
}

TEST_F(TranscriptionHistoryTest, AFailedWriteIsMadeUpForByTheNext) {
    const auto history = start();
    m_writer.failures.push_back(SystemError::fromErrno(ENOSPC, file));
    history->add(dictation(QStringLiteral("a")));
    EXPECT_EQ(textsOf(history->entries()), QStringList(QStringLiteral("a")));
    EXPECT_TRUE(writes().empty());
    history->add(dictation(QStringLiteral("b")));
    EXPECT_EQ(written(), HistoryCodec::encode(history->entries()));
}

TEST_F(TranscriptionHistoryTest, AnEntryThatJsonCannotSayStopsTheSaving) {
    const auto history = startWithEntries(1);
    FinishedDictation odd = dictation(QStringLiteral("odd"));
    odd.durationSeconds = std::numeric_limits<double>::infinity();
    history->add(odd);
    history->add(dictation(QStringLiteral("next")));
    EXPECT_EQ(history->entries().size(), 3);
    EXPECT_TRUE(writes().empty());
    history->deleteEntry(history->entries()[1].id);
    EXPECT_EQ(written(), HistoryCodec::encode(history->entries()));
}

TEST_F(TranscriptionHistoryTest, RemovedEntriesComeBackToTheirPlaces) {
    const auto history = startWithEntries(5);
    const QList<HistoryEntry> before = history->entries();
    QList<PlacedHistoryEntry> removed;
    for (const int index : { 4, 1, 2, 3 }) {
        removed += history->placesOf(before[index].id);
        history->deleteEntry(before[index].id);
    }
    history->add(dictation(QStringLiteral("new")));
    history->restore(removed);
    EXPECT_EQ(history->entries().mid(1), before);
    EXPECT_EQ(written(), HistoryCodec::encode(history->entries()));
    const size_t writesBefore = writes().size();
    history->restore({});
    EXPECT_EQ(writes().size(), writesBefore);
}

TEST_F(TranscriptionHistoryTest, EntriesOfOneMomentAndOneIdComeBackToTheirPlaces) {
    HistoryEntry other = fullHistoryEntry();
    other.id = QUuid::createUuid();
    const QList<HistoryEntry> before { plainHistoryEntry(), other, fullHistoryEntry(), fullHistoryEntry() };
    const auto history = startWith(HistoryCodec::encode(before).value());
    const QList<PlacedHistoryEntry> removed = history->placesOf(plainHistoryEntry().id);
    EXPECT_EQ(removed.size(), 3);
    history->deleteEntry(plainHistoryEntry().id);
    history->restore(removed);
    EXPECT_EQ(history->entries(), before);
}

TEST_F(TranscriptionHistoryTest, AnEntryWithoutItsNeighbourComesBackBeforeAnOlderOne) {
    const auto history = startWithEntries(4);
    const QList<HistoryEntry> before = history->entries();
    const QList<PlacedHistoryEntry> removed = history->placesOf(before[1].id);
    history->deleteEntries({ before[1].id, before[2].id });
    history->restore(removed);
    EXPECT_EQ(textsOf(history->entries()), texts({ 3, 2, 0 }));
}

TEST_F(TranscriptionHistoryTest, APinMovesNothingButTheDisplay) {
    const auto history = startWithEntries(3);
    const QUuid oldest = history->entries()[2].id;
    history->togglePin(oldest);
    EXPECT_EQ(textsOf(history->entries()), texts({ 2, 1, 0 }));
    EXPECT_EQ(textsOf(history->entriesForDisplay()), texts({ 0, 2, 1 }));
    EXPECT_EQ(history->latestEntry()->id, oldest);
    EXPECT_EQ(writes().size(), 1U);
    history->togglePin(oldest);
    EXPECT_EQ(textsOf(history->entriesForDisplay()), texts({ 2, 1, 0 }));
    EXPECT_EQ(writes().size(), 2U);
}

TEST_F(TranscriptionHistoryTest, PinnedEntriesAreSortedAmongThemselves) {
    const auto history = startWithEntries(4);
    history->togglePin(history->entries()[3].id);
    history->togglePin(history->entries()[1].id);
    EXPECT_EQ(textsOf(history->entriesForDisplay()), texts({ 2, 0, 3, 1 }));
    EXPECT_EQ(history->latestEntry()->rawText, u"2");
}

TEST_F(TranscriptionHistoryTest, TheDisplayFollowsTheTimeAndNotTheFile) {
    HistoryEntry earlier = plainHistoryEntry();
    earlier.timestamp = { 1 };
    earlier.rawText = QStringLiteral("earlier");
    const auto history = startWith(HistoryCodec::encode({ earlier, plainHistoryEntry() }).value());
    EXPECT_EQ(history->latestEntry()->rawText, u"salut lume");
    EXPECT_EQ(history->entriesForDisplay().back().rawText, u"earlier");
}

TEST_F(TranscriptionHistoryTest, AnEmptyHistoryHasNoLatestEntry) {
    EXPECT_EQ(start()->latestEntry(), std::nullopt);
}

TEST_F(TranscriptionHistoryTest, ChosenEntriesComeInDisplayOrder) {
    const auto history = startWithEntries(4);
    const QUuid oldest = history->entries()[3].id;
    const QUuid newest = history->entries()[0].id;
    history->togglePin(oldest);
    EXPECT_EQ(textsOf(history->entries({ newest, oldest, QUuid::createUuid() })), texts({ 0, 3 }));
    EXPECT_TRUE(history->entries(QSet<QUuid>()).isEmpty());
}

TEST_F(TranscriptionHistoryTest, UnknownIdsChangeNothing) {
    const auto history = startWithEntries(2);
    history->togglePin(QUuid::createUuid());
    history->deleteEntry(QUuid::createUuid());
    history->deleteEntries({ QUuid::createUuid(), QUuid::createUuid() });
    history->deleteEntries({});
    EXPECT_EQ(textsOf(history->entries()), texts({ 1, 0 }));
    EXPECT_TRUE(writes().empty());
}

TEST_F(TranscriptionHistoryTest, DeletesTheChosenEntries) {
    const auto history = startWithEntries(5);
    history->deleteEntry(history->entries()[0].id);
    EXPECT_EQ(textsOf(history->entries()), texts({ 3, 2, 1, 0 }));
    EXPECT_EQ(writes().size(), 1U);
    history->deleteEntries({ history->entries()[0].id, history->entries()[2].id, QUuid::createUuid() });
    EXPECT_EQ(textsOf(history->entries()), texts({ 2, 0 }));
    EXPECT_EQ(writes().size(), 2U);
}

TEST_F(TranscriptionHistoryTest, DeletingFewOrManyWritesWhatIsLeft) {
    const auto history = startWithEntries(12);
    for (const QList<int> &places : { QList { 1, 3 }, QList { 0, 2, 4, 6, 8, 9 }, QList { 0, 3 } }) {
        QSet<QUuid> ids;
        for (const int place : places)
            ids.insert(history->entries()[place].id);
        history->deleteEntries(ids);
        EXPECT_EQ(written(), HistoryCodec::encode(history->entries()));
    }
    EXPECT_EQ(history->entries().size(), 2);
}

TEST_F(TranscriptionHistoryTest, EqualIdsArePinnedOnceAndDeletedTogether) {
    const auto history
        = startWith(HistoryCodec::encode({ plainHistoryEntry(), plainHistoryEntry() }).value());
    history->togglePin(plainHistoryEntry().id);
    EXPECT_TRUE(history->entries()[0].isPinned);
    EXPECT_FALSE(history->entries()[1].isPinned);
    history->deleteEntry(plainHistoryEntry().id);
    EXPECT_TRUE(history->entries().isEmpty());
}

TEST_F(TranscriptionHistoryTest, ClearingLeavesAnEmptyArray) {
    const auto history = startWithEntries(2);
    history->clear();
    EXPECT_TRUE(history->entries().isEmpty());
    EXPECT_EQ(written(), "[]");
    EXPECT_TRUE(startWith(written())->entries().isEmpty());
    history->clear();
    history->waitUntilWritten();
    EXPECT_EQ(writes().size(), 2U);
}

namespace {
/// A disk that takes a write only when it is told to.
class SlowDisk {
public:
    explicit SlowDisk(FakeAtomicFileWriter &writer) {
        writer.whileWriting = [this] {
            std::unique_lock lock(m_mutex);
            ++m_beginningCount;
            m_changed.notify_all();
            m_changed.wait(lock, [this] { return m_isAwake; });
        };
    }
    ~SlowDisk() { wakeUp(); }

    /// Blocks until a write has begun.
    void waitForABeginning() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_beginningCount > 0; });
    }
    void wakeUp() {
        const std::lock_guard lock(m_mutex);
        m_isAwake = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_beginningCount = 0;
    bool m_isAwake = false;
};
} // namespace

TEST_F(TranscriptionHistoryTest, NoOperationWaitsForTheDisk) {
    const auto history = startWithEntries(3);
    SlowDisk disk(m_writer);
    history->add(dictation(QStringLiteral("a")));
    disk.waitForABeginning();
    const auto first = HistoryCodec::encode(history->entries()).value();
    history->togglePin(history->entries()[1].id);
    history->add(dictation(QStringLiteral("b")));
    history->deleteEntry(history->entries()[3].id);
    EXPECT_EQ(textsOf(history->entries()), QStringList({ "b", "a", "2", "0" }));
    EXPECT_TRUE(m_writer.writes.empty());
    disk.wakeUp();
    // What came while the disk was busy goes there at once, in its last form.
    ASSERT_EQ(writes().size(), 2U);
    EXPECT_EQ(writes()[0].content, first);
    EXPECT_EQ(writes()[1].content, HistoryCodec::encode(history->entries()));
}

TEST_F(TranscriptionHistoryTest, AWriteThatFailsLateIsMadeUpForToo) {
    const auto history = start();
    SlowDisk disk(m_writer);
    m_writer.failures.push_back(SystemError::fromErrno(EIO, file));
    history->add(dictation(QStringLiteral("a")));
    disk.waitForABeginning();
    history->add(dictation(QStringLiteral("b")));
    disk.wakeUp();
    EXPECT_EQ(written(), HistoryCodec::encode(history->entries()));
    EXPECT_EQ(writes().size(), 1U);
}

TEST_F(TranscriptionHistoryTest, ItsEndWaitsForTheDisk) {
    auto history = start();
    history->add(dictation(QStringLiteral("a")));
    const auto entries = history->entries();
    history.reset();
    ASSERT_EQ(m_writer.writes.size(), 1U);
    EXPECT_EQ(m_writer.writes.front().content, HistoryCodec::encode(entries));
}

TEST_F(TranscriptionHistoryTest, ObserversHearBeforeAndAfterAChange) {
    const auto history = startWithEntries(1);
    QStringList heard;
    const auto note = [&](const char *what) {
        heard += QString::fromUtf8(what) + QString::number(history->entries().size());
    };
    QObject::connect(history.get(), &ObservableObject::objectWillChange, [&] { note("object "); });
    QObject::connect(history.get(), &TranscriptionHistory::entriesWillChange, [&] { note("will "); });
    QObject::connect(history.get(), &TranscriptionHistory::entriesChanged, [&] { note("changed "); });
    m_writer.whileWriting = [&] { note("write "); };

    history->add(dictation(QStringLiteral("a")));
    history->waitUntilWritten();
    EXPECT_EQ(heard,
        (QStringList { QStringLiteral("object 1"), QStringLiteral("will 1"), QStringLiteral("changed 2"),
            QStringLiteral("write 2") }));
    heard.clear();
    history->deleteEntry(QUuid::createUuid());
    EXPECT_EQ(heard, (QStringList { QStringLiteral("object 2"), QStringLiteral("will 2") }));
}

namespace {
mode_t modeOf(const QString &path) {
    struct stat status { };
    return ::stat(path.toUtf8().constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}
} // namespace

TEST(TranscriptionHistoryOnDisk, IsPrivateAndSurvivesARestart) {
    const QTemporaryDir home;
    const VirtualClock clock;
    LinuxFileManager fileManager({ home.path(), {}, {}, home.path() });
    LinuxAtomicFileWriter writer;
    const mode_t oldMask = ::umask(0);
    QList<HistoryEntry> entries;
    {
        TranscriptionHistory history(clock, fileManager, writer);
        history.add(dictation(QStringLiteral("ăîșț")));
        history.add(dictation(QStringLiteral("b/\"\\\n")));
        history.togglePin(history.entries()[1].id);
        entries = history.entries();
    }
    ::umask(oldMask);
    TranscriptionHistory history(clock, fileManager, writer);
    EXPECT_EQ(history.entries(), entries);
    EXPECT_EQ(modeOf(history.storageURL().path()), 0600U);
    EXPECT_EQ(modeOf(history.storageURL().deletingLastPathComponent().path()), 0700U);
}
