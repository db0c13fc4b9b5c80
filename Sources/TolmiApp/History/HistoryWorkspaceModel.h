#pragma once

#include "Platform/AtomicFileWriter.h"
#include "Platform/FileViewer.h"
#include "Platform/Pasteboard.h"
#include "Platform/SavePanel.h"
#include "TolmiApp/Audio/AudioCacheStore.h"
#include "TolmiApp/History/HistoryAudioPlaybackController.h"
#include "TolmiApp/History/HistoryEntryDetail.h"
#include "TolmiApp/History/HistoryRows.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Navigation/HistorySelection.h"
#include "TolmiApp/Texts/PlatformTexts.h"

class DateTexts;
class SettingsStore;

/// What the history workspace asks of the system; all of it outlives the workspace.
struct HistoryWorkspacePlatform {
    Clock &clock;
    FileManager &fileManager;
    AtomicFileWriter &fileWriter;
    Pasteboard &pasteboard;
    AudioPlayers &audioPlayers;
    FileViewer &fileViewer;
    SavePanel &savePanel;
    const DateTexts &dates;
    /// Tells the user of a failure, by title and message, once the workspace is not shown any more.
    std::function<void(const QString &, const QString &)> tellElsewhere;
};

/// The workspace in which past dictations are searched, read, heard, copied, pinned, exported and deleted. It
/// lives as long as it is shown. Main thread only.
///
/// Two selections exist side by side: one entry has the focus and is shown in detail, and any number is
/// ticked for export and deletion. Neither changes the other.
class HistoryWorkspaceModel final : public ObservableObject {
    Q_OBJECT
    /// What is searched for.
    TOLMI_PUBLISHED(QString, searchText, setSearchText, search())
    /// The ticked entries, those that a search hides included.
    TOLMI_PUBLISHED_READONLY(QSet<QUuid>, selectedIDs, setSelectedIDs)
    /// Whether the user is being asked about the deletion of everything.
    TOLMI_PUBLISHED_READONLY(bool, showingClearAllConfirmation, setShowingClearAllConfirmation)
    /// The notice that an export failed, and why.
    TOLMI_PUBLISHED_READONLY(bool, showingExportError, setShowingExportError)
    TOLMI_PUBLISHED_READONLY(QString, exportErrorMessage, setExportErrorMessage)
    /// The notice that a recording is not heard, and what to do about it.
    TOLMI_PUBLISHED_READONLY(bool, showingAudioError, setShowingAudioError)
    TOLMI_PUBLISHED_READONLY(QString, audioErrorMessage, setAudioErrorMessage)
    /// How many entries the delete key has taken away that can still be brought back.
    TOLMI_PUBLISHED_READONLY(int, undoableCount, setUndoableCount)
    /// The row of the focused entry; -1 when nothing is shown.
    TOLMI_PUBLISHED_READONLY(int, focusedRow, setFocusedRow)
    /// The focused entry.
    TOLMI_PUBLISHED_READONLY(HistoryEntryDetail, detail, setDetail)

    /// The entries that the search leaves.
    Q_PROPERTY(HistoryRows *rows READ rows CONSTANT)
    Q_PROPERTY(bool hasEntries READ hasEntries NOTIFY entriesShown)
    Q_PROPERTY(bool hasDisplayedEntries READ hasDisplayedEntries NOTIFY entriesShown)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectedIDsChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY wordsChanged)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY wordsChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY undoableCountChanged)
    Q_PROPERTY(QString undoText READ undoText NOTIFY wordsChanged)
    Q_PROPERTY(QString undoTitle READ undoTitle NOTIFY wordsChanged)
    Q_PROPERTY(QString copyRawTitle READ copyRawTitle NOTIFY wordsChanged)
    Q_PROPERTY(QString copyRefinedTitle READ copyRefinedTitle NOTIFY wordsChanged)
    /// What the button beside the recording of the focused entry does.
    Q_PROPERTY(QString audioPlaybackLabel READ audioPlaybackLabel NOTIFY playbackShown)
    /// Whether the recording of the focused entry is heard.
    Q_PROPERTY(bool isFocusedEntryPlaying READ isFocusedEntryPlaying NOTIFY playbackShown)

public:
    /// What the workspace is about; outlives it.
    struct Dependencies {
        TranscriptionHistory &history;
        SettingsStore &settings;
        HistorySelection &selection;
    };

    HistoryWorkspaceModel(const Dependencies &dependencies, const HistoryWorkspacePlatform &platform,
        PlatformTexts texts, QObject *parent = nullptr);
    /// Silences what plays.
    ~HistoryWorkspaceModel() override;

    HistoryRows *rows() { return &m_rows; }
    HistoryAudioPlaybackController &audioPlayback() { return m_audioPlayback; }
    bool hasEntries() const { return !m_history.entries().isEmpty(); }
    bool hasDisplayedEntries() const { return m_rows.rowCount() > 0; }
    bool hasSelection() const { return !selectedIDs().isEmpty(); }
    QString countText() const;
    QString selectedText() const;
    bool canUndo() const { return undoableCount() > 0; }
    QString undoText() const;
    QString undoTitle() const;
    QString copyRawTitle() const;
    QString copyRefinedTitle() const;
    bool isFocusedEntryPlaying() const;
    QString audioPlaybackLabel() const;

    /// Gives an entry the focus.
    Q_INVOKABLE void focusEntry(const QUuid &id);
    /// Moves the focus by so many rows, at most to the ends of the list.
    Q_INVOKABLE void moveFocus(int rowCount);
    Q_INVOKABLE void setTicked(const QUuid &id, bool isTicked);
    Q_INVOKABLE void toggleFocusedTick();

    Q_INVOKABLE void togglePin(const QUuid &id);
    Q_INVOKABLE void deleteEntry(const QUuid &id);
    /// What the delete key does: it goes to the neighbouring entry, and can be undone for ten seconds.
    Q_INVOKABLE void deleteFocusedEntry();
    /// Brings back what the delete key has taken away and can still be undone, ticks included.
    Q_INVOKABLE void undoDeletion();
    Q_INVOKABLE void deleteSelectedEntries();

    /// Asks before everything is deleted; one of the other two answers.
    Q_INVOKABLE void askToClearAll();
    Q_INVOKABLE void clearAll();
    Q_INVOKABLE void cancelClearAll();

    Q_INVOKABLE void exportSelectedEntries();
    /// Exports the whole history, whatever is searched for.
    Q_INVOKABLE void exportAllEntries();
    Q_INVOKABLE void dismissExportError();

    /// Put a text of the focused entry on the clipboard.
    Q_INVOKABLE void copyRawText();
    Q_INVOKABLE void copyRefinedText();
    /// The refined text, or the raw one where there is no other.
    Q_INVOKABLE void copyFocusedText();

    /// Plays, pauses or resumes the recording of the focused entry.
    Q_INVOKABLE void toggleFocusedPlayback();
    Q_INVOKABLE void dismissAudioError();
    /// Shows the recording of the focused entry in its folder, or the folder alone when the file has gone.
    Q_INVOKABLE void revealFocusedAudio();

Q_SIGNALS:
    /// The rows are up to date after a change of the history or of the search.
    void entriesShown();
    /// Counts or the language have changed.
    void wordsChanged();
    void playbackShown();

private:
    void search();
    void noticeChangedEntries();
    void ensureFocusedEntryStillValid();
    void focusFirst();
    void focusNeighbour();
    void offerUndo(const QList<PlacedHistoryEntry> &removed);
    void forgetDeletions();
    void refreshFocus();
    void refreshDetail();
    void refreshWords();
    HistoryEntryDetail detailOf(const HistoryEntry &entry) const;
    QStringList pasteFactsOf(const HistoryEntry &entry) const;
    void exportEntries(QList<HistoryEntry> entries, const QString &suggestedName);
    void showExportError(const QString &message);
    void copyToClipboard(const QString &text);
    void tick();
    void prepareSearchStepByStep();
    /// Runs `work` after `seconds` if the workspace is still shown then.
    void callAfter(double seconds, void (HistoryWorkspaceModel::*work)());
    QString text(L10n::Key key) const;

    TranscriptionHistory &m_history;
    SettingsStore &m_settings;
    HistorySelection &m_selection;
    const HistoryWorkspacePlatform m_platform;
    const PlatformTexts m_texts;
    const AudioCacheStore m_audioCacheStore;
    HistoryAudioPlaybackController m_audioPlayback;
    HistoryRows m_rows;
    /// Ids of the history's entries in its order, by which a changed list is told from a changed entry.
    QList<QUuid> m_entryIDs;
    /// What the delete key has taken away, and what of it was ticked.
    QList<PlacedHistoryEntry> m_deletions;
    QSet<QUuid> m_deletedTicks;
    /// Tells the last offer to undo from those before it, which it extends.
    int m_undoOffers = 0;
};
