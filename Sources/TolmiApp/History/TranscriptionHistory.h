#pragma once

#include "Foundation/Clock.h"
#include "Foundation/ObservableObject.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"
#include "TolmiApp/History/HistoryEntry.h"

#include <QByteArray>
#include <QList>
#include <QSet>

#include <optional>

/// Every finished dictation, in memory and in one private file that is rewritten at every change.
///
/// Main thread only; every change is on the disk when its operation returns. No operation fails: what cannot
/// be read is an empty history, and what cannot be written is tried again with the next change.
class TranscriptionHistory final : public ObservableObject, public DictationHistory {
    Q_OBJECT

    // A published field, but not by the macro: that one's setter takes the new value whole, which for one
    // more entry would copy a history of years.
    Q_PROPERTY(QList<HistoryEntry> entries READ entries NOTIFY entriesChanged)

public:
    /// Reads the file of the user's application support folder; ends the program where the system names no
    /// such folder. The collaborators must outlive the history.
    TranscriptionHistory(const Clock &clock, FileManager &fileManager, AtomicFileWriter &fileWriter);

    /// Where the history is kept.
    const FileURL &storageURL() const { return m_storageURL; }

    /// All entries, those added last in front.
    const QList<HistoryEntry> &entries() const { return m_entries; }

    /// The entry that is shown first.
    std::optional<HistoryEntry> latestEntry() const;

    /// All entries, the pinned ones first and the later before the earlier.
    QList<HistoryEntry> entriesForDisplay() const;

    /// The entries with these ids, in the order of entriesForDisplay().
    QList<HistoryEntry> entries(const QSet<QUuid> &ids) const;

    /// Puts a new entry of this moment in front.
    void add(const FinishedDictation &dictation) override;

    /// Pins or releases the first entry with this id, which keeps its place in entries().
    void togglePin(const QUuid &id);

    /// Removes the entries with these ids; their recordings stay.
    void deleteEntry(const QUuid &id);
    void deleteEntries(const QSet<QUuid> &ids);

    /// Removes all entries.
    void clear();

Q_SIGNALS:
    /// The entries are about to change; see ObservableObject.
    void entriesWillChange();
    void entriesChanged();

private:
    void load();
    void prepend(HistoryEntry entry);

    /// Lets `change` work on the entries themselves, with the announcements around it; both tell whether
    /// there really was a change.
    template <typename Change>
    bool changeEntries(Change change);

    /// Writes the entries, after a change that m_json knows of.
    void save();
    /// Writes the entries, after any other change.
    void saveAnew();

    const Clock &m_clock;
    FileManager &m_fileManager;
    AtomicFileWriter &m_fileWriter;
    FileURL m_storageURL;
    QList<HistoryEntry> m_entries;

    /// The entries as the file holds them, where that is known, so that one more dictation does not cost
    /// putting all others into words again.
    std::optional<QByteArray> m_json;
};
