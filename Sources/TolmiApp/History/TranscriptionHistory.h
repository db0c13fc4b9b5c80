#pragma once

#include "Foundation/Clock.h"
#include "Foundation/ObservableObject.h"
#include "Foundation/SerialQueue.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"
#include "TolmiApp/History/HistoryEntry.h"

#include <QByteArray>
#include <QList>
#include <QSet>

#include <future>
#include <memory>
#include <optional>

/// An entry and its place, told by the entry right behind it; none behind the last one.
struct PlacedHistoryEntry {
    HistoryEntry entry;
    std::optional<QUuid> idBehind;
};

/// Every finished dictation, in memory and in one private file that is rewritten at every change.
///
/// Main thread only; the disk is left to a thread of its own, which puts every change there in order and may
/// be late. No operation fails: what cannot be read is an empty history, and what cannot be written is tried
/// again with the next change. Destruction waits for the last write.
class TranscriptionHistory final : public ObservableObject, public DictationHistory {
    Q_OBJECT

    // A published field, but not by the macro: that one's setter takes the new value whole, which for one
    // more entry would copy a history of years.
    Q_PROPERTY(QList<HistoryEntry> entries READ entries NOTIFY entriesChanged)

public:
    /// Reads the file of the user's application support folder; ends the program where the system names no
    /// such folder. The collaborators must outlive the history.
    TranscriptionHistory(const Clock &clock, FileManager &fileManager, AtomicFileWriter &fileWriter);
    ~TranscriptionHistory() override;

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

    /// The entries with this id and their places, from front to back.
    QList<PlacedHistoryEntry> placesOf(const QUuid &id) const;

    /// Puts removed entries, in the order in which they were removed, back in their places. Where the entry
    /// behind has gone too, the place is before the first that is older.
    void restore(const QList<PlacedHistoryEntry> &removed);

    /// Removes all entries.
    void clear();

    /// Waits until every change so far is on the disk, or could not be put there, as long as the file writer
    /// waits for the disk.
    void waitUntilWritten();

Q_SIGNALS:
    /// The entries are about to change; see ObservableObject.
    void entriesWillChange();
    void entriesChanged();

private:
    struct Outbox;

    void load();
    void prepareJSON();
    void prepend(HistoryEntry entry);
    void takeLoadedJSON();
    void replaceInJSON(const HistoryEntry &before, const std::optional<HistoryEntry> &after);
    void removeFromJSON(const QSet<QUuid> &ids);
    void forgetJSON();

    /// Lets `change` work on the entries themselves, with the announcements around it; both tell whether
    /// there really was a change.
    template <typename Change>
    bool changeEntries(Change change);

    /// Has the entries written, after a change that m_json knows of.
    void save();
    /// Has the entries written, after any other change.
    void saveAnew();

    const Clock &m_clock;
    FileManager &m_fileManager;
    AtomicFileWriter &m_fileWriter;
    FileURL m_storageURL;
    QList<HistoryEntry> m_entries;

    /// The entries as the file holds them, where that is known, so that a change of a few does not cost
    /// putting all others into words again.
    std::optional<QByteArray> m_json;
    /// The same for the entries that were loaded, until the first change; not valid without any.
    std::future<std::optional<QByteArray>> m_loadedJSON;
    std::unique_ptr<Outbox> m_outbox;
    /// Last, so that it ends first: what is queued uses the others.
    SerialQueue m_queue { QStringLiteral("Tolmi.TranscriptionHistory") };
};
