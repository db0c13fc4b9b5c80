#include "TolmiApp/History/HistoryWorkspaceModel.h"

#include "App/History/HistoryEntries.h"
#include "Support/HistoryWorkspaceFixture.h"
#include "Support/Print.h"
#include "TolmiApp/History/HistoryExportFormatter.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <cerrno>

namespace {
using AudioState = HistoryEntryDetail::AudioState;

/// An entry made `minutesAgo` minutes before the start of the clock.
HistoryEntry entry(const QString &text, int minutesAgo = 0) {
    return { { .rawText = text, .refinedText = text, .language = QStringLiteral("ro") }, QUuid::createUuid(),
        VirtualClock::start + -60.0 * minutesAgo };
}

class HistoryWorkspaceModelTest : public testing::Test {
protected:
    /// Shows the workspace over these entries.
    void open(const QList<HistoryEntry> &entries) {
        m_user = std::make_unique<HistoryWorkspaceFixture>(entries);
        m_model = m_user->open();
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_model->rows(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    /// The entries "0", "1", ..., each a minute older than the one before.
    void openWith(int count) {
        QList<HistoryEntry> entries;
        for (int number = 0; number < count; ++number)
            entries.append(entry(QString::number(number), number));
        open(entries);
    }
    /// One entry that names a recording.
    void openWithRecording(const QString &name) {
        HistoryEntry recorded = entry(QStringLiteral("recorded"));
        recorded.audioFileRelativePath = name;
        open({ recorded });
    }
    /// One entry whose recording is there.
    void openWithSound() {
        openWithRecording(QStringLiteral("a.wav"));
        m_user->addRecording(QStringLiteral("a.wav"));
    }

    QString shown() const {
        QStringList texts;
        for (int row = 0; row < m_model->rows()->rowCount(); ++row)
            texts += m_model->rows()->entry(row).rawText;
        return texts.join(u' ');
    }
    QUuid idOf(const QString &text) const {
        for (const HistoryEntry &entry : m_user->history.entries()) {
            if (entry.rawText == text)
                return entry.id;
        }
        return {};
    }
    QUuid idOf(int number) const { return idOf(QString::number(number)); }
    std::optional<QUuid> selected() const { return m_user->selection.selectedHistoryEntryID(); }
    QString focused() const { return m_model->detail().isPresent ? m_model->detail().rawText : QString(); }
    void tick(int number) { m_model->setTicked(idOf(number), true); }
    const FakeAtomicFileWriter::Write &lastWrite() const { return m_user->writer.writes.back(); }

    std::unique_ptr<HistoryWorkspaceFixture> m_user;
    std::unique_ptr<HistoryWorkspaceModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};
} // namespace

// The list and the focus

TEST_F(HistoryWorkspaceModelTest, WithoutEntriesNothingIsFocused) {
    open({});
    EXPECT_FALSE(m_model->hasEntries());
    EXPECT_FALSE(m_model->hasDisplayedEntries());
    EXPECT_EQ(selected(), std::nullopt);
    EXPECT_EQ(m_model->focusedRow(), -1);
    EXPECT_FALSE(m_model->detail().isPresent);
    EXPECT_EQ(m_model->countText(), QStringLiteral("0 total"));
    EXPECT_EQ(m_model->selectedText(), QStringLiteral("0 selected"));
    m_model->moveFocus(1);
    m_model->toggleFocusedTick();
    m_model->deleteFocusedEntry();
    m_model->copyRawText();
    m_model->copyRefinedText();
    m_model->toggleFocusedPlayback();
    m_model->revealFocusedAudio();
    EXPECT_TRUE(m_user->pasteboard.calls.empty());
    EXPECT_TRUE(m_user->isNothingWritten());
}

TEST_F(HistoryWorkspaceModelTest, AppearingFocusesTheFirstEntry) {
    openWith(3);
    EXPECT_EQ(shown(), QStringLiteral("0 1 2"));
    EXPECT_EQ(selected(), idOf(0));
    EXPECT_EQ(m_model->focusedRow(), 0);
}

TEST_F(HistoryWorkspaceModelTest, AppearingKeepsAFocusThatIsThere) {
    openWith(3);
    m_model->focusEntry(idOf(2));
    m_model = nullptr;
    m_tester = nullptr;
    m_model = m_user->open();
    EXPECT_EQ(focused(), QStringLiteral("2"));
}

TEST_F(HistoryWorkspaceModelTest, AppearingReplacesAFocusThatHasGone) {
    openWith(2);
    m_tester = nullptr;
    m_model = nullptr;
    m_user->selection.setSelectedHistoryEntryID(QUuid::createUuid());
    m_model = m_user->open();
    EXPECT_EQ(selected(), idOf(0));
}

TEST_F(HistoryWorkspaceModelTest, AFocusThatIsSetToNothingElsewhereShowsTheFirst) {
    openWith(2);
    m_user->selection.setSelectedHistoryEntryID(std::nullopt);
    EXPECT_EQ(focused(), QStringLiteral("0"));
    EXPECT_EQ(m_model->focusedRow(), 0);
    EXPECT_EQ(selected(), std::nullopt);
}

TEST_F(HistoryWorkspaceModelTest, TheFocusMovesInTheListAndStopsAtItsEnds) {
    openWith(3);
    m_model->moveFocus(1);
    EXPECT_EQ(focused(), QStringLiteral("1"));
    m_model->moveFocus(5);
    EXPECT_EQ(focused(), QStringLiteral("2"));
    m_model->moveFocus(-1);
    EXPECT_EQ(focused(), QStringLiteral("1"));
    m_model->moveFocus(-9);
    EXPECT_EQ(focused(), QStringLiteral("0"));
}

TEST_F(HistoryWorkspaceModelTest, PinnedEntriesStandInFront) {
    openWith(3);
    m_model->focusEntry(idOf(1));
    m_model->togglePin(idOf(2));
    EXPECT_EQ(shown(), QStringLiteral("2 0 1"));
    EXPECT_EQ(focused(), QStringLiteral("1"));
    EXPECT_EQ(m_model->focusedRow(), 2);
    m_model->togglePin(idOf(2));
    EXPECT_EQ(shown(), QStringLiteral("0 1 2"));
    EXPECT_EQ(m_model->focusedRow(), 1);
}

TEST_F(HistoryWorkspaceModelTest, ANewDictationAppearsAndTheFocusStays) {
    openWith(2);
    m_user->clock.shift(60);
    m_user->history.add({ .rawText = QStringLiteral("new"),
        .refinedText = QStringLiteral("New"),
        .language = QStringLiteral("en") });
    EXPECT_EQ(shown(), QStringLiteral("new 0 1"));
    EXPECT_EQ(focused(), QStringLiteral("0"));
    EXPECT_EQ(m_model->focusedRow(), 1);
    EXPECT_EQ(m_model->countText(), QStringLiteral("3 total"));
}

TEST_F(HistoryWorkspaceModelTest, TheFirstDictationIsFocused) {
    open({});
    m_user->history.add({ .rawText = QStringLiteral("new") });
    EXPECT_EQ(focused(), QStringLiteral("new"));
    EXPECT_EQ(selected(), idOf(QStringLiteral("new")));
    EXPECT_TRUE(m_model->hasDisplayedEntries());
}

// Search

TEST_F(HistoryWorkspaceModelTest, ASearchNarrowsTheListAndMovesTheFocus) {
    open({ entry(QStringLiteral("alpha")), entry(QStringLiteral("beta"), 1),
        entry(QStringLiteral("ALSO"), 2) });
    m_model->focusEntry(idOf(QStringLiteral("beta")));
    m_model->setSearchText(QStringLiteral(" al "));
    EXPECT_EQ(shown(), QStringLiteral("alpha ALSO"));
    EXPECT_EQ(focused(), QStringLiteral("alpha"));
    EXPECT_EQ(m_model->countText(), QStringLiteral("3 total"));
}

TEST_F(HistoryWorkspaceModelTest, ASearchKeepsAFocusThatItShows) {
    open({ entry(QStringLiteral("alpha")), entry(QStringLiteral("also"), 1) });
    m_model->focusEntry(idOf(QStringLiteral("also")));
    m_model->setSearchText(QStringLiteral("al"));
    EXPECT_EQ(focused(), QStringLiteral("also"));
    EXPECT_EQ(m_model->focusedRow(), 1);
}

TEST_F(HistoryWorkspaceModelTest, BlanksAreNoSearch) {
    openWith(3);
    m_model->setSearchText(QStringLiteral(" \t\n\u00A0"));
    EXPECT_EQ(shown(), QStringLiteral("0 1 2"));
}

TEST_F(HistoryWorkspaceModelTest, ASearchWithoutMatchesLeavesNoFocusAndKeepsTheTicks) {
    openWith(3);
    tick(1);
    m_model->setSearchText(QStringLiteral("nothing like it"));
    EXPECT_FALSE(m_model->hasDisplayedEntries());
    EXPECT_TRUE(m_model->hasEntries());
    EXPECT_EQ(selected(), std::nullopt);
    EXPECT_FALSE(m_model->detail().isPresent);
    EXPECT_EQ(m_model->selectedIDs(), QSet { idOf(1) });
    m_model->setSearchText({});
    EXPECT_EQ(selected(), idOf(0));
    EXPECT_EQ(focused(), QStringLiteral("0"));
}

TEST_F(HistoryWorkspaceModelTest, ANewDictationObeysTheSearch) {
    openWith(2);
    m_model->setSearchText(QStringLiteral("x"));
    m_user->history.add({ .rawText = QStringLiteral("no") });
    EXPECT_EQ(shown(), QString());
    m_user->history.add({ .rawText = QStringLiteral("yes, X") });
    EXPECT_EQ(shown(), QStringLiteral("yes, X"));
    EXPECT_EQ(focused(), QStringLiteral("yes, X"));
}

TEST_F(HistoryWorkspaceModelTest, TextsAreMadeReadyForTheSearchInTheBackground) {
    openWith(1200);
    m_user->clock.advance(0);
    m_model->setSearchText(QStringLiteral("1199"));
    EXPECT_EQ(shown(), QStringLiteral("1199"));
    // What is left to come is the minute's tick.
    EXPECT_EQ(m_user->clock.pendingCallCount(), 1U);
}

TEST_F(HistoryWorkspaceModelTest, AMegabyteOfTextIsSearchedAndShown) {
    const QString large = QString(1'000'000, u'a') + QStringLiteral(" Țintă");
    open({ entry(large), entry(QStringLiteral("small"), 1) });
    m_model->setSearchText(QStringLiteral("ținTĂ"));
    EXPECT_EQ(m_model->rows()->rowCount(), 1);
    EXPECT_EQ(m_model->detail().refinedText, large);
}

// Ticks

TEST_F(HistoryWorkspaceModelTest, TickingChangesNoFocusAndFocusingNoTick) {
    openWith(3);
    tick(2);
    EXPECT_EQ(focused(), QStringLiteral("0"));
    EXPECT_TRUE(m_model->hasSelection());
    EXPECT_EQ(m_model->selectedText(), QStringLiteral("1 selected"));
    EXPECT_TRUE(m_model->rows()->data(m_model->rows()->index(2), HistoryRows::IsTickedRole).toBool());
    m_model->focusEntry(idOf(1));
    EXPECT_EQ(m_model->selectedIDs(), QSet { idOf(2) });
    m_model->setTicked(idOf(2), false);
    EXPECT_FALSE(m_model->hasSelection());
}

TEST_F(HistoryWorkspaceModelTest, TheFocusedEntryIsTickedAndUnticked) {
    openWith(2);
    m_model->toggleFocusedTick();
    EXPECT_EQ(m_model->selectedIDs(), QSet { idOf(0) });
    m_model->toggleFocusedTick();
    EXPECT_TRUE(m_model->selectedIDs().isEmpty());
}

TEST_F(HistoryWorkspaceModelTest, TickedEntriesThatAreDeletedElsewhereDropOut) {
    openWith(3);
    tick(0);
    tick(2);
    m_user->history.deleteEntry(idOf(2));
    EXPECT_EQ(m_model->selectedIDs(), QSet { idOf(0) });
    EXPECT_EQ(m_model->selectedText(), QStringLiteral("1 selected"));
}

// Deletion

TEST_F(HistoryWorkspaceModelTest, DeletingTheFocusedEntryFocusesTheFirst) {
    openWith(4);
    tick(2);
    m_model->focusEntry(idOf(2));
    m_model->deleteEntry(idOf(2));
    EXPECT_EQ(shown(), QStringLiteral("0 1 3"));
    EXPECT_EQ(selected(), idOf(0));
    EXPECT_TRUE(m_model->selectedIDs().isEmpty());
    EXPECT_FALSE(m_model->showingClearAllConfirmation());
}

TEST_F(HistoryWorkspaceModelTest, TheDeleteKeyGoesToTheNeighbour) {
    openWith(4);
    tick(1);
    m_model->focusEntry(idOf(1));
    m_model->deleteFocusedEntry();
    EXPECT_EQ(shown(), QStringLiteral("0 2 3"));
    EXPECT_EQ(selected(), idOf(2));
    EXPECT_TRUE(m_model->selectedIDs().isEmpty());
    m_model->focusEntry(idOf(3));
    m_model->deleteFocusedEntry();
    EXPECT_EQ(selected(), idOf(2));
}

TEST_F(HistoryWorkspaceModelTest, TheDeleteKeyIsUndone) {
    openWith(4);
    const QList<HistoryEntry> before = m_user->history.entries();
    tick(1);
    m_model->focusEntry(idOf(1));
    m_model->deleteFocusedEntry();
    EXPECT_EQ(m_model->undoText(), QStringLiteral("Deleted: 1"));
    m_user->clock.advance(9);
    m_model->deleteFocusedEntry();
    m_user->clock.advance(9);
    EXPECT_EQ(m_model->undoText(), QStringLiteral("Deleted: 2"));
    m_model->undoDeletion();
    EXPECT_EQ(m_user->history.entries(), before);
    EXPECT_EQ(focused(), QStringLiteral("2"));
    EXPECT_EQ(m_model->selectedIDs(), QSet { idOf(1) });
    m_user->history.waitUntilWritten();
    EXPECT_EQ(m_user->historyWriter.writes.back().content, HistoryCodec::encode(before));
    m_model->undoDeletion();
    EXPECT_EQ(m_user->history.entries(), before);
}

TEST_F(HistoryWorkspaceModelTest, AnUndoBringsTheRecordingBack) {
    openWithSound();
    m_model->togglePin(m_model->detail().entryID);
    const QList<HistoryEntry> before = m_user->history.entries();
    m_model->deleteFocusedEntry();
    EXPECT_TRUE(m_user->files.fileExists(HistoryWorkspaceFixture::recordingPath(QStringLiteral("a.wav"))));
    m_model->undoDeletion();
    EXPECT_EQ(m_user->history.entries(), before);
    EXPECT_EQ(m_model->detail().audioState, AudioState::Available);
}

TEST_F(HistoryWorkspaceModelTest, AnUndoIsOfferedForTenSeconds) {
    openWith(3);
    m_model->deleteFocusedEntry();
    m_user->clock.advance(9.5);
    EXPECT_TRUE(m_model->canUndo());
    m_user->clock.advance(0.5);
    EXPECT_FALSE(m_model->canUndo());
    m_model->undoDeletion();
    EXPECT_EQ(shown(), QStringLiteral("1 2"));
    // What is past is not brought back with what is deleted next.
    m_model->deleteFocusedEntry();
    m_model->undoDeletion();
    EXPECT_EQ(shown(), QStringLiteral("1 2"));
}

TEST_F(HistoryWorkspaceModelTest, ALaterDeletionHasItsTenSecondsToo) {
    openWith(3);
    m_model->deleteFocusedEntry();
    m_model->undoDeletion();
    m_user->clock.advance(5);
    m_model->deleteFocusedEntry();
    m_user->clock.advance(5);
    EXPECT_TRUE(m_model->canUndo());
}

TEST_F(HistoryWorkspaceModelTest, OnlyTheDeleteKeyIsUndone) {
    openWith(4);
    tick(0);
    m_model->deleteSelectedEntries();
    m_model->deleteEntry(idOf(1));
    EXPECT_FALSE(m_model->canUndo());
    m_model->deleteFocusedEntry();
    m_model->clearAll();
    EXPECT_FALSE(m_model->canUndo());
    m_model->undoDeletion();
    EXPECT_FALSE(m_model->hasEntries());
}

TEST_F(HistoryWorkspaceModelTest, AnUndoUnderASearchThatHidesTheEntryLeavesTheFocus) {
    openWith(3);
    m_model->deleteFocusedEntry();
    m_model->setSearchText(QStringLiteral("2"));
    m_model->undoDeletion();
    EXPECT_EQ(shown(), QStringLiteral("2"));
    EXPECT_EQ(selected(), idOf(2));
    m_model->setSearchText({});
    EXPECT_EQ(shown(), QStringLiteral("0 1 2"));
}

TEST_F(HistoryWorkspaceModelTest, AnOfferToUndoGoesWithTheWorkspace) {
    openWith(2);
    m_model->deleteFocusedEntry();
    m_tester = nullptr;
    m_model = nullptr;
    m_user->clock.advance(20);
    EXPECT_EQ(m_user->history.entries().size(), 1);
}

TEST_F(HistoryWorkspaceModelTest, TheCopiedTextIsTheRawOneWhereThereIsNoOther) {
    HistoryEntry plain = entry(QStringLiteral("raw"));
    plain.refinedText.clear();
    HistoryEntry refined = entry(QStringLiteral("raw"), 1);
    refined.refinedText = QStringLiteral("Refined.");
    open({ plain, refined });
    m_model->copyFocusedText();
    EXPECT_EQ(m_user->pasteboard.content.front().representations.front().second, QByteArray("raw"));
    m_model->moveFocus(1);
    m_model->copyFocusedText();
    EXPECT_EQ(m_user->pasteboard.content.front().representations.front().second, QByteArray("Refined."));
}

TEST_F(HistoryWorkspaceModelTest, DeletingAnotherEntryKeepsTheFocus) {
    openWith(3);
    m_model->focusEntry(idOf(1));
    m_model->deleteEntry(idOf(0));
    EXPECT_EQ(selected(), idOf(1));
    EXPECT_EQ(m_model->focusedRow(), 0);
}

TEST_F(HistoryWorkspaceModelTest, DeletingTheLastEntryLeavesNothing) {
    openWith(1);
    m_model->deleteFocusedEntry();
    EXPECT_EQ(selected(), std::nullopt);
    EXPECT_FALSE(m_model->detail().isPresent);
    EXPECT_FALSE(m_model->hasEntries());
}

TEST_F(HistoryWorkspaceModelTest, DeletingTheTickedEntriesIncludesHiddenOnes) {
    openWith(5);
    tick(0);
    tick(3);
    m_model->setSearchText(QStringLiteral("3"));
    m_model->deleteSelectedEntries();
    EXPECT_TRUE(m_model->selectedIDs().isEmpty());
    EXPECT_EQ(selected(), std::nullopt);
    m_model->setSearchText({});
    EXPECT_EQ(shown(), QStringLiteral("1 2 4"));
    EXPECT_EQ(selected(), idOf(1));
}

TEST_F(HistoryWorkspaceModelTest, WithoutTicksNothingIsDeleted) {
    openWith(2);
    m_model->deleteSelectedEntries();
    EXPECT_EQ(shown(), QStringLiteral("0 1"));
    EXPECT_TRUE(m_user->isNothingWritten());
}

TEST_F(HistoryWorkspaceModelTest, ClearingAllAsksFirst) {
    openWith(2);
    tick(0);
    m_model->askToClearAll();
    EXPECT_TRUE(m_model->showingClearAllConfirmation());
    m_model->cancelClearAll();
    EXPECT_FALSE(m_model->showingClearAllConfirmation());
    EXPECT_EQ(shown(), QStringLiteral("0 1"));
    m_model->askToClearAll();
    m_model->clearAll();
    EXPECT_FALSE(m_model->showingClearAllConfirmation());
    EXPECT_EQ(shown(), QString());
    EXPECT_TRUE(m_model->selectedIDs().isEmpty());
    EXPECT_EQ(selected(), std::nullopt);
    m_user->history.waitUntilWritten();
    EXPECT_EQ(m_user->historyWriter.writes.back().content, QByteArray("[]"));
}

// Detail

TEST_F(HistoryWorkspaceModelTest, TheDetailTellsWhereTheTextWent) {
    HistoryEntry pasted = fullHistoryEntry();
    pasted.timestamp = VirtualClock::start;
    pasted.pasteTimestamp = VirtualClock::start + 3.5;
    open({ pasted });
    const HistoryEntryDetail &detail = m_model->detail();
    EXPECT_EQ(detail.date, QStringLiteral("Jan 1, 2026, 00:00:00"));
    EXPECT_EQ(detail.language, QStringLiteral("Language: RO"));
    EXPECT_EQ(detail.pasteFacts.join(u'|'),
        QStringLiteral("Pasted to: Notes|Bundle ID: com.apple.Notes|Paste time: Jan 1, 2026, 00:00:03"));
    EXPECT_EQ(detail.rawText, QStringLiteral("salut lume"));
    EXPECT_EQ(detail.refinedText, QStringLiteral("Salut, lume!"));
}

TEST_F(HistoryWorkspaceModelTest, EmptyAndAbsentPasteDataIsLeftOut) {
    HistoryEntry pasted = entry(QStringLiteral("a"));
    pasted.pasteTargetAppName = QStringLiteral("Notes");
    pasted.pasteTargetBundleID = QString(QLatin1String(""));
    open({ pasted });
    EXPECT_EQ(m_model->detail().pasteFacts.join(u'|'), QStringLiteral("Pasted to: Notes"));
}

TEST_F(HistoryWorkspaceModelTest, WithoutAPasteTargetTheDetailSaysSo) {
    openWith(1);
    EXPECT_EQ(m_model->detail().pasteFacts.join(u'|'), QStringLiteral("Paste destination was not captured."));
}

TEST_F(HistoryWorkspaceModelTest, AllWordsFollowTheLanguage) {
    openWithSound();
    m_model->setSearchText({});
    m_user->settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(m_model->countText(), QStringLiteral("1 total"));
    EXPECT_EQ(m_model->selectedText(), QStringLiteral("0 selectate"));
    EXPECT_EQ(m_model->copyRawTitle(), QStringLiteral("Copiaza Brut"));
    EXPECT_EQ(m_model->copyRefinedTitle(), QStringLiteral("Copiaza Rafinat"));
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Reda"));
    EXPECT_EQ(m_model->detail().language, QStringLiteral("Limba: RO"));
    EXPECT_EQ(m_model->detail().audioFile, QStringLiteral("Fisier: a.wav"));
    EXPECT_EQ(m_model->rows()->data(m_model->rows()->index(0), HistoryRows::RelativeDateRole),
        QStringLiteral("acum"));
}

TEST_F(HistoryWorkspaceModelTest, RelativeDatesMoveOnceAMinute) {
    openWith(1);
    const auto relativeDate = [this] {
        return m_model->rows()->data(m_model->rows()->index(0), HistoryRows::RelativeDateRole).toString();
    };
    EXPECT_EQ(relativeDate(), QStringLiteral("now"));
    m_user->clock.advance(59);
    EXPECT_EQ(relativeDate(), QStringLiteral("now"));
    m_user->clock.advance(1);
    EXPECT_EQ(relativeDate(), QStringLiteral("1 min. ago"));
    m_user->clock.advance(120);
    EXPECT_EQ(relativeDate(), QStringLiteral("3 min. ago"));
}

TEST_F(HistoryWorkspaceModelTest, RelativeDatesAreRightAfterASleepAndAfterTheClockIsSet) {
    openWith(1);
    const auto relativeDate = [this] {
        return m_model->rows()->data(m_model->rows()->index(0), HistoryRows::RelativeDateRole).toString();
    };
    m_user->clock.jump(3600);
    m_user->clock.advance(5);
    EXPECT_EQ(relativeDate(), QStringLiteral("1 hr. ago"));
    m_user->clock.jump(-3000);
    m_user->clock.advance(5);
    EXPECT_EQ(relativeDate(), QStringLiteral("10 min. ago"));
}

TEST_F(HistoryWorkspaceModelTest, AWorkspaceThatHasGoneTicksNoMore) {
    openWith(1);
    m_tester = nullptr;
    m_model = nullptr;
    m_user->clock.advance(600);
    EXPECT_EQ(m_user->clock.pendingCallCount(), 0U);
}

TEST_F(HistoryWorkspaceModelTest, CopiesReplaceTheClipboardUnmarked) {
    HistoryEntry both = entry(QStringLiteral("raw"));
    both.refinedText = QStringLiteral("Rafinat: țară 🙂");
    open({ both });
    const auto clipboard = [this] { return m_user->pasteboard.content.front().representations; };
    using Representations = std::vector<std::pair<QString, QByteArray>>;
    m_model->copyRawText();
    EXPECT_EQ(clipboard(), (Representations { { pasteboardTextType, "raw" } }));
    m_model->copyRefinedText();
    EXPECT_EQ(clipboard(), (Representations { { pasteboardTextType, "Rafinat: țară 🙂" } }));
    EXPECT_FALSE(m_user->pasteboard.isMarked());
    EXPECT_EQ(m_model->copyRawTitle(), QStringLiteral("Copy Raw"));
    EXPECT_EQ(m_model->copyRefinedTitle(), QStringLiteral("Copy Refined"));
}

// Recordings

TEST_F(HistoryWorkspaceModelTest, WithoutARecordingThereIsNothingToPlay) {
    openWith(1);
    EXPECT_EQ(m_model->detail().audioState, AudioState::NotCaptured);
    EXPECT_EQ(m_model->detail().audioFile, QString());
    m_model->toggleFocusedPlayback();
    m_model->revealFocusedAudio();
    EXPECT_TRUE(m_user->players.calls.isEmpty());
    EXPECT_TRUE(m_user->fileViewer.calls.isEmpty());
}

TEST_F(HistoryWorkspaceModelTest, APathOfBlanksIsNoRecordingAlthoughItsRowIsMarked) {
    openWithRecording(QStringLiteral(" \n"));
    EXPECT_EQ(m_model->detail().audioState, AudioState::NotCaptured);
    EXPECT_TRUE(m_model->rows()->data(m_model->rows()->index(0), HistoryRows::HasAudioRole).toBool());
}

TEST_F(HistoryWorkspaceModelTest, AVanishedRecordingShowsItsFolder) {
    openWithRecording(QStringLiteral(" a.wav "));
    EXPECT_EQ(m_model->detail().audioState, AudioState::Missing);
    EXPECT_EQ(m_model->detail().audioFile, QStringLiteral("File: a.wav"));
    m_model->toggleFocusedPlayback();
    EXPECT_TRUE(m_user->players.calls.isEmpty());
    m_model->revealFocusedAudio();
    EXPECT_EQ(m_user->fileViewer.calls.join(u','),
        QStringLiteral("openFolder /home/user/.local/share/Tolmi/audio-cache"));
}

TEST_F(HistoryWorkspaceModelTest, ARecordingIsPlayedPausedAndFound) {
    openWithSound();
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Play"));
    m_model->toggleFocusedPlayback();
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Pause"));
    EXPECT_TRUE(m_model->isFocusedEntryPlaying());
    m_model->toggleFocusedPlayback();
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Play"));
    EXPECT_FALSE(m_model->isFocusedEntryPlaying());
    m_model->revealFocusedAudio();
    const QString path = HistoryWorkspaceFixture::recordingPath(QStringLiteral("a.wav"));
    EXPECT_EQ(
        m_user->players.calls.join(u','), QStringLiteral("open %1,prepare %1,play %1,pause %1").arg(path));
    EXPECT_EQ(m_user->fileViewer.calls.join(u','), QStringLiteral("selectFile ") + path);
}

TEST_F(HistoryWorkspaceModelTest, AnotherEntryOffersToPlayItsOwn) {
    HistoryEntry first = entry(QStringLiteral("0"));
    first.audioFileRelativePath = QStringLiteral("0.wav");
    HistoryEntry second = entry(QStringLiteral("1"), 1);
    second.audioFileRelativePath = QStringLiteral("1.wav");
    open({ first, second });
    m_user->addRecording(QStringLiteral("0.wav"));
    m_user->addRecording(QStringLiteral("1.wav"));
    m_model->toggleFocusedPlayback();
    m_model->moveFocus(1);
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Play"));
    EXPECT_TRUE(m_model->audioPlayback().isPlaying());
    m_model->moveFocus(-1);
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Pause"));
}

TEST_F(HistoryWorkspaceModelTest, TheEndOfTheRecordingOffersToPlayAgain) {
    openWithSound();
    m_model->toggleFocusedPlayback();
    m_user->players.sounds.front()->finish();
    m_user->clock.runPosted();
    EXPECT_EQ(m_model->audioPlaybackLabel(), QStringLiteral("Play"));
}

TEST_F(HistoryWorkspaceModelTest, DeletingTheEntryThatPlaysSilencesIt) {
    openWithSound();
    m_model->toggleFocusedPlayback();
    m_user->history.clear();
    EXPECT_TRUE(m_user->players.sounds.front()->isDestroyed);
    EXPECT_EQ(m_model->audioPlayback().playingEntryID(), std::nullopt);
}

TEST_F(HistoryWorkspaceModelTest, LeavingTheWorkspaceSilencesIt) {
    openWithSound();
    m_model->toggleFocusedPlayback();
    m_tester = nullptr;
    m_model = nullptr;
    EXPECT_TRUE(m_user->players.sounds.front()->isDestroyed);
    EXPECT_EQ(m_user->players.calls.last(),
        QStringLiteral("stop ") + HistoryWorkspaceFixture::recordingPath(QStringLiteral("a.wav")));
}

TEST_F(HistoryWorkspaceModelTest, ABrokenRecordingIsTold) {
    openWithSound();
    const QString path = HistoryWorkspaceFixture::recordingPath(QStringLiteral("a.wav"));
    m_user->players.failures.emplace(path, SystemError(QStringLiteral("no sound")));
    m_model->toggleFocusedPlayback();
    EXPECT_TRUE(m_model->showingAudioError());
    EXPECT_EQ(
        m_model->audioErrorMessage(), QStringLiteral("Please try again or show the file in its folder."));
    m_model->dismissAudioError();
    EXPECT_FALSE(m_model->showingAudioError());
}

TEST_F(HistoryWorkspaceModelTest, ASoundThatDoesNotStartIsTold) {
    openWithSound();
    m_user->players.canPlay = false;
    m_model->toggleFocusedPlayback();
    EXPECT_TRUE(m_model->showingAudioError());
}

TEST_F(HistoryWorkspaceModelTest, ARecordingThatVanishesWhileItIsShownIsNoticed) {
    openWithSound();
    m_model->focusEntry(idOf(QStringLiteral("recorded")));
    m_user->clock.advance(60);
    EXPECT_EQ(m_model->detail().audioState, AudioState::Available);
    m_user->files.files.erase(HistoryWorkspaceFixture::recordingPath(QStringLiteral("a.wav")));
    m_model->toggleFocusedPlayback();
    EXPECT_EQ(m_model->detail().audioState, AudioState::Missing);
    EXPECT_FALSE(m_model->showingAudioError());
}

// Export

namespace {
class HistoryExport : public HistoryWorkspaceModelTest {
protected:
    HistoryExport() {
        openWith(3);
        m_user->clock.shift(3723);
    }

    static FileURL chosen() { return FileURL(QStringLiteral("/home/user/history.txt")); }
    QByteArray exported(const QSet<QUuid> &ids) const {
        return HistoryExportFormatter::format(m_user->history.entries(ids)).toUtf8();
    }
};
} // namespace

TEST_F(HistoryExport, OfEverythingIgnoresTheSearch) {
    m_model->setSearchText(QStringLiteral("1"));
    m_model->exportAllEntries();
    EXPECT_EQ(m_user->savePanel.requests.back(),
        (SavePanelRequest { QStringLiteral("Export transcription history"),
            QStringLiteral("tolmi-history-all-2026-01-01-010203.txt") }));
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_EQ(lastWrite(),
        (FakeAtomicFileWriter::Write {
            chosen().path(), exported({ idOf(0), idOf(1), idOf(2) }), FilePrivacy::AsUsual }));
    EXPECT_FALSE(m_model->showingExportError());
}

TEST_F(HistoryExport, OfTheTickedOnesIncludesHiddenOnes) {
    tick(0);
    tick(2);
    m_model->setSearchText(QStringLiteral("1"));
    m_model->exportSelectedEntries();
    EXPECT_EQ(m_user->savePanel.requests.back().proposedName,
        QStringLiteral("tolmi-history-selected-2026-01-01-010203.txt"));
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_EQ(lastWrite().content, exported({ idOf(0), idOf(2) }));
}

TEST_F(HistoryExport, OfNothingAsksNothing) {
    m_model->exportSelectedEntries();
    m_user->history.clear();
    m_model->exportAllEntries();
    EXPECT_TRUE(m_user->savePanel.requests.empty());
}

TEST_F(HistoryExport, ThatIsCancelledWritesAndShowsNothing) {
    m_model->exportAllEntries();
    ASSERT_TRUE(m_user->savePanel.answer(std::nullopt));
    EXPECT_TRUE(m_user->isNothingWritten());
    EXPECT_FALSE(m_model->showingExportError());
}

TEST_F(HistoryExport, HoldsTheEntriesOfTheClickInTheLanguageOfTheAnswer) {
    m_model->exportAllEntries();
    const QList<HistoryEntry> entries = m_user->history.entriesForDisplay();
    m_user->history.clear();
    m_user->settings.store.setUiLanguage(AppLanguage::Romanian);
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_EQ(lastWrite().content, HistoryExportFormatter::format(entries, AppLanguage::Romanian).toUtf8());
}

TEST_F(HistoryExport, IsWrittenEvenIfTheWorkspaceHasGone) {
    m_model->exportAllEntries();
    m_tester = nullptr;
    m_model = nullptr;
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_EQ(lastWrite().path, chosen().path());
}

TEST_F(HistoryExport, ThatFailsIsToldAndKeepsTheEntries) {
    m_user->writer.failures.push_back(SystemError::fromErrno(EACCES, chosen().path()));
    m_model->exportAllEntries();
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_TRUE(m_model->showingExportError());
    EXPECT_EQ(m_model->exportErrorMessage(), QStringLiteral("Permission denied: /home/user/history.txt"));
    EXPECT_EQ(shown(), QStringLiteral("0 1 2"));
    m_model->dismissExportError();
    EXPECT_FALSE(m_model->showingExportError());
    EXPECT_TRUE(m_user->notices.isEmpty());
}

TEST_F(HistoryExport, ThatFailsAfterTheWorkspaceHasGoneIsToldElsewhere) {
    m_user->writer.failures.push_back(SystemError::fromErrno(ENOSPC, chosen().path()));
    m_model->exportAllEntries();
    m_tester = nullptr;
    m_model = nullptr;
    ASSERT_TRUE(m_user->savePanel.answer(chosen()));
    EXPECT_TRUE(m_user->writer.writes.empty());
    EXPECT_EQ(m_user->notices,
        QStringList(QStringLiteral("Export failed: No space left on device: /home/user/history.txt")));
}
