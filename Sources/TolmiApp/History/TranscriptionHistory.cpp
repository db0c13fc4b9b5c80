#include "TolmiApp/History/TranscriptionHistory.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {
/// Beyond these, putting all entries into words again is quicker than looking for each in the JSON.
constexpr qsizetype mostReplacements = 4;

FileURL applicationSupportOf(const FileManager &fileManager) {
    const std::optional<FileURL> url = fileManager.applicationSupportDirectory();
    if (!url)
        fatalError(QStringLiteral("Tolmi: there is no application support folder for the history"));
    return *url;
}

bool displaySort(const HistoryEntry &left, const HistoryEntry &right) {
    if (left.isPinned != right.isPinned)
        return left.isPinned;
    return left.timestamp > right.timestamp;
}

QList<HistoryEntry> sortedForDisplay(QList<HistoryEntry> entries) {
    std::stable_sort(entries.begin(), entries.end(), displaySort);
    return entries;
}

QList<HistoryEntry>::const_iterator placeIn(
    const QList<HistoryEntry> &entries, const PlacedHistoryEntry &place) {
    const auto isBehind = [&place](const HistoryEntry &other) { return other.id == place.idBehind; };
    const auto isOlder
        = [&place](const HistoryEntry &other) { return other.timestamp < place.entry.timestamp; };
    const auto behind = std::find_if(entries.cbegin(), entries.cend(), isBehind);
    return behind != entries.cend() || !place.idBehind
        ? behind
        : std::find_if(entries.cbegin(), entries.cend(), isOlder);
}
} // namespace

/// The newest content of the file, until its write begins. What a slow disk has not taken by then is left
/// out, since every content is whole.
struct TranscriptionHistory::Outbox {
    std::mutex mutex;
    std::optional<QByteArray> content;

    /// Whether no write is queued that will take it.
    bool put(QByteArray newest) {
        const std::lock_guard lock(mutex);
        const bool wasEmpty = !content;
        content = std::move(newest);
        return wasEmpty;
    }
    std::optional<QByteArray> take() {
        const std::lock_guard lock(mutex);
        return std::exchange(content, {});
    }
};

TranscriptionHistory::TranscriptionHistory(
    const Clock &clock, FileManager &fileManager, AtomicFileWriter &fileWriter)
    : m_clock(clock)
    , m_fileManager(fileManager)
    , m_fileWriter(fileWriter)
    , m_outbox(std::make_unique<Outbox>()) {
    const FileURL folder = applicationSupportOf(fileManager).appendingPathComponent(QStringLiteral("Tolmi"));
    try {
        m_fileManager.createDirectory(folder);
    } catch (const SystemError &) {
        // Reading finds nothing then, and every save fails as quietly.
    }
    m_fileWriter.sweepLeftovers(folder);
    m_storageURL = folder.appendingPathComponent(QStringLiteral("history.json"));
    load();
    prepareJSON();
}

TranscriptionHistory::~TranscriptionHistory() = default;

std::optional<HistoryEntry> TranscriptionHistory::latestEntry() const {
    const auto latest = std::min_element(m_entries.begin(), m_entries.end(), displaySort);
    return latest == m_entries.end() ? std::nullopt : std::optional(*latest);
}

QList<HistoryEntry> TranscriptionHistory::entriesForDisplay() const {
    return sortedForDisplay(m_entries);
}

QList<HistoryEntry> TranscriptionHistory::entries(const QSet<QUuid> &ids) const {
    QList<HistoryEntry> chosen;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(chosen),
        [&ids](const HistoryEntry &entry) { return ids.contains(entry.id); });
    return sortedForDisplay(std::move(chosen));
}

void TranscriptionHistory::add(const FinishedDictation &dictation) {
    prepend({ dictation, QUuid::createUuid(), m_clock.now() });
}

void TranscriptionHistory::prepend(HistoryEntry entry) {
    takeLoadedJSON();
    if (m_json && !HistoryCodec::prepend(*m_json, entry))
        m_json.reset();
    changeEntries([&entry](QList<HistoryEntry> &entries) {
        entries.prepend(std::move(entry));
        return true;
    });
    save();
}

void TranscriptionHistory::togglePin(const QUuid &id) {
    const auto found = std::find_if(
        m_entries.cbegin(), m_entries.cend(), [&id](const HistoryEntry &entry) { return entry.id == id; });
    if (found == m_entries.cend())
        return;
    const qsizetype index = found - m_entries.cbegin();
    HistoryEntry changed = *found;
    changed.isPinned = !changed.isPinned;
    replaceInJSON(*found, changed);
    changeEntries([index, &changed](QList<HistoryEntry> &entries) {
        entries[index] = changed;
        return true;
    });
    save();
}

void TranscriptionHistory::deleteEntry(const QUuid &id) {
    deleteEntries({ id });
}

void TranscriptionHistory::deleteEntries(const QSet<QUuid> &ids) {
    if (ids.isEmpty())
        return;
    removeFromJSON(ids);
    const bool isChanged = changeEntries([&ids](QList<HistoryEntry> &entries) {
        return entries.removeIf([&ids](const HistoryEntry &entry) { return ids.contains(entry.id); }) > 0;
    });
    if (isChanged)
        save();
}

QList<PlacedHistoryEntry> TranscriptionHistory::placesOf(const QUuid &id) const {
    QList<PlacedHistoryEntry> places;
    for (qsizetype index = 0; index < m_entries.size(); ++index) {
        if (m_entries[index].id != id)
            continue;
        const bool isLast = index == m_entries.size() - 1;
        places.append({ m_entries[index], isLast ? std::nullopt : std::optional(m_entries[index + 1].id) });
    }
    return places;
}

void TranscriptionHistory::restore(const QList<PlacedHistoryEntry> &removed) {
    if (removed.isEmpty())
        return;
    changeEntries([&removed](QList<HistoryEntry> &entries) {
        for (auto place = removed.crbegin(); place != removed.crend(); ++place)
            entries.insert(placeIn(entries, *place), place->entry);
        return true;
    });
    saveAnew();
}

void TranscriptionHistory::clear() {
    changeEntries([](QList<HistoryEntry> &entries) {
        const bool isChange = !entries.isEmpty();
        entries.clear();
        return isChange;
    });
    saveAnew();
}

template <typename Change>
bool TranscriptionHistory::changeEntries(Change change) {
    return publishChange([this] { Q_EMIT entriesWillChange(); }, [&] { return change(m_entries); },
        [this] { Q_EMIT entriesChanged(); });
}

void TranscriptionHistory::load() {
    if (!m_fileManager.fileExists(m_storageURL.path()))
        return;
    try {
        if (auto entries = HistoryCodec::decode(m_fileManager.contents(m_storageURL)))
            m_entries = std::move(*entries);
    } catch (const SystemError &) {
        // A file that cannot be read is an empty history.
    }
}

/// Puts the loaded entries into words on the history's own thread: for a history of years the main thread
/// would stand still over that at the first dictation after a start.
void TranscriptionHistory::prepareJSON() {
    if (m_entries.isEmpty())
        return;
    const auto encoding = std::make_shared<std::packaged_task<std::optional<QByteArray>()>>(
        [entries = m_entries] { return HistoryCodec::encode(entries); });
    m_loadedJSON = encoding->get_future();
    m_queue.async([encoding] { (*encoding)(); });
}

void TranscriptionHistory::takeLoadedJSON() {
    if (m_loadedJSON.valid())
        m_json = m_loadedJSON.get();
}

void TranscriptionHistory::replaceInJSON(
    const HistoryEntry &before, const std::optional<HistoryEntry> &after) {
    takeLoadedJSON();
    if (m_json && !HistoryCodec::replace(*m_json, before, after))
        m_json.reset();
}

void TranscriptionHistory::removeFromJSON(const QSet<QUuid> &ids) {
    const QList<HistoryEntry> leaving = entries(ids);
    if (leaving.size() > mostReplacements) {
        forgetJSON();
        return;
    }
    for (const HistoryEntry &entry : leaving)
        replaceInJSON(entry, std::nullopt);
}

void TranscriptionHistory::forgetJSON() {
    m_loadedJSON = {};
    m_json.reset();
}

void TranscriptionHistory::saveAnew() {
    forgetJSON();
    save();
}

void TranscriptionHistory::save() {
    if (!m_json)
        m_json = HistoryCodec::encode(m_entries);
    if (!m_json || !m_outbox->put(*m_json))
        return;
    m_queue.async([this] {
        const std::optional<QByteArray> content = m_outbox->take();
        try {
            m_fileWriter.write(m_storageURL, *content, FilePrivacy::Private);
        } catch (const SystemError &) {
            // The entries stay, and the next save writes them all.
        }
    });
}

void TranscriptionHistory::waitUntilWritten() {
    m_queue.sync([] {});
}
