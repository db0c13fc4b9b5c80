#include "TolmiApp/History/HistoryRows.h"

#include "Text/DateTexts.h"
#include "Text/Text.h"
#include "TolmiApp/History/RowDifference.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {
/// More of a text than a row can show.
constexpr qsizetype longestShownText = 400;

QString withoutLineEnds(QString text) {
    return text.replace(u'\n', u' ');
}

/// The beginning of a text that may be a megabyte long.
QString beginning(const QString &text) {
    if (text.size() <= longestShownText)
        return text;
    const bool isPairCut = text[longestShownText - 1].isHighSurrogate();
    return text.left(isPairCut ? longestShownText - 1 : longestShownText);
}

QByteArray searchForm(const QString &text) {
    return Text::caseFolded(text).toUtf8();
}

} // namespace

/// One entry, and what belongs to it as long as it is in the history.
struct HistoryRows::Item {
    HistoryEntry entry;
    /// Both texts in the form in which they are searched, with a byte between them that is in no text; null
    /// while it is not prepared.
    QByteArray searchText;
    /// The row in the shown list; -1 when it is not in there.
    int row = -1;
    /// The entry says something else than when it was shown last.
    bool isChanged = false;

    void prepareSearch() {
        if (searchText.isNull())
            searchText = searchForm(entry.rawText) + '\xFF' + searchForm(entry.refinedText);
    }
    bool contains(const QByteArray &query) {
        prepareSearch();
        return ::memmem(
                   searchText.constData(), size_t(searchText.size()), query.constData(), size_t(query.size()))
            != nullptr;
    }
};

HistoryRows::HistoryRows(const DateTexts &dates, QObject *parent)
    : QAbstractListModel(parent)
    , m_dates(dates) { }

HistoryRows::~HistoryRows() = default;

int HistoryRows::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant HistoryRows::data(const QModelIndex &index, int role) const {
    if (!hasIndex(index.row(), index.column(), index.parent()))
        return {};
    const HistoryEntry &entry = this->entry(index.row());
    switch (role) {
    case EntryIDRole:
        return QVariant::fromValue(entry.id);
    case TitleRole:
        return previewTitle(
            { .rawText = beginning(entry.rawText), .refinedText = beginning(entry.refinedText) },
            m_context.emptyTitle);
    case PreviewRole:
        return withoutLineEnds(beginning(entry.refinedText));
    case RelativeDateRole:
        return m_dates.relative(entry.timestamp, m_context.now, rawValue(m_context.language));
    case LanguageRole:
        return Text::upperCased(entry.language);
    case HasAudioRole:
        return entry.audioFileRelativePath.has_value();
    case PasteTargetRole:
        return entry.pasteTargetAppName.value_or(QString());
    case IsPinnedRole:
        return entry.isPinned;
    case IsTickedRole:
        return m_context.tickedIDs.contains(entry.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryRows::roleNames() const {
    return {
        { EntryIDRole, "entryID" },
        { TitleRole, "title" },
        { PreviewRole, "preview" },
        { RelativeDateRole, "relativeDate" },
        { LanguageRole, "language" },
        { HasAudioRole, "hasAudio" },
        { PasteTargetRole, "pasteTarget" },
        { IsPinnedRole, "isPinned" },
        { IsTickedRole, "isTicked" },
    };
}

void HistoryRows::setEntries(const QList<HistoryEntry> &entries) {
    QHash<QUuid, ItemPointer> known;
    known.reserve(qsizetype(m_all.size()));
    for (ItemPointer &item : m_all)
        known[item->entry.id] = std::move(item);
    m_all.clear();
    m_all.reserve(size_t(entries.size()));
    for (const HistoryEntry &entry : entries) {
        // Taken out: a file changed by hand may have an id twice, and each entry needs an item of its own.
        ItemPointer item = known.take(entry.id);
        if (!item) {
            item = std::make_shared<Item>(Item { .entry = entry });
        } else if (item->entry != entry) {
            *item = Item { .entry = entry, .row = item->row, .isChanged = true };
        }
        m_all.push_back(std::move(item));
    }
    m_preparedCount = 0;
    show(matching(m_all, false));
}

// A text that has the longer phrase has the shorter one too, so each letter that is typed or taken away
// settles a part of the texts without a look at them.
void HistoryRows::setQuery(const QString &query) {
    const QByteArray former = std::exchange(m_query, searchForm(query));
    const bool isNarrower = m_query.contains(former);
    const bool isWider = former.contains(m_query);
    show(matching(isNarrower ? m_shown : m_all, isWider));
}

bool HistoryRows::prepareSearch(int count) {
    const size_t end = std::min(m_all.size(), m_preparedCount + size_t(count));
    for (; m_preparedCount < end; ++m_preparedCount)
        m_all[m_preparedCount]->prepareSearch();
    return m_preparedCount < m_all.size();
}

HistoryRows::Items HistoryRows::matching(const Items &among, bool areShownOnesMatching) {
    if (m_query.isEmpty())
        return m_all;
    Items items;
    for (const ItemPointer &item : among) {
        const bool isKnown = areShownOnesMatching && item->row >= 0;
        if (isKnown || item->contains(m_query))
            items.push_back(item);
    }
    return items;
}

/// Turns the shown rows into `items`.
void HistoryRows::show(const Items &items) {
    std::vector<NewRow> newRows;
    newRows.reserve(items.size());
    for (const ItemPointer &item : items)
        newRows.push_back({ item->row, std::exchange(item->isChanged, false) });
    const RowDifference difference = rowDifference(int(m_shown.size()), newRows);
    for (const ItemPointer &item : m_shown)
        item->row = -1;
    for (size_t row = 0; row < items.size(); ++row)
        items[row]->row = int(row);

    for (const RowRun &run : difference.removals)
        remove(run);
    if (difference.move)
        move(*difference.move);
    for (const RowRun &run : difference.insertions)
        insert(run, items);
    for (const int row : difference.changes)
        Q_EMIT dataChanged(index(row), index(row));
}

void HistoryRows::remove(const RowRun &run) {
    const auto first = m_shown.begin() + run.first;
    beginRemoveRows({}, run.first, run.first + run.count - 1);
    m_shown.erase(first, first + run.count);
    endRemoveRows();
}

void HistoryRows::move(const RowMove &move) {
    const auto from = m_shown.begin() + move.from;
    const auto to = m_shown.begin() + move.to;
    const bool isDown = move.from < move.to;
    // The model's rule names the row that will follow the moved one.
    beginMoveRows({}, move.from, move.from, {}, isDown ? move.to + 1 : move.to);
    if (isDown)
        std::rotate(from, from + 1, to + 1);
    else
        std::rotate(to, from, from + 1);
    endMoveRows();
}

/// Brings the run of `items` to the same rows.
void HistoryRows::insert(const RowRun &run, const Items &items) {
    const auto first = items.begin() + run.first;
    beginInsertRows({}, run.first, run.first + run.count - 1);
    m_shown.insert(m_shown.begin() + run.first, first, first + run.count);
    endInsertRows();
}

void HistoryRows::setContext(Context context) {
    m_context = std::move(context);
    tellAll({});
}

void HistoryRows::setNow(Date now) {
    m_context.now = now;
    tellAll({ RelativeDateRole });
}

void HistoryRows::setTickedIDs(const QSet<QUuid> &ids) {
    m_context.tickedIDs = ids;
    tellAll({ IsTickedRole });
}

void HistoryRows::tellAll(const QList<int> &roles) {
    if (!m_shown.empty())
        Q_EMIT dataChanged(index(0), index(int(m_shown.size()) - 1), roles);
}

const HistoryEntry &HistoryRows::entry(int row) const {
    return m_shown[size_t(row)]->entry;
}

int HistoryRows::rowOf(const QUuid &id) const {
    const auto found = std::find_if(
        m_shown.begin(), m_shown.end(), [&id](const ItemPointer &item) { return item->entry.id == id; });
    return found == m_shown.end() ? -1 : int(found - m_shown.begin());
}

QString HistoryRows::previewTitle(const FinishedDictation &dictation, const QString &emptyTitle) {
    const QString title
        = withoutLineEnds(dictation.refinedText.isEmpty() ? dictation.rawText : dictation.refinedText);
    return title.isEmpty() ? emptyTitle : title;
}
