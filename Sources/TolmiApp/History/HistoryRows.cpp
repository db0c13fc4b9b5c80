#include "TolmiApp/History/HistoryRows.h"

#include "Text/DateTexts.h"
#include "Text/Text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {
/// More of a text than a row can show.
constexpr qsizetype longestShownText = 400;
/// Many small changes of a list cost its view more than one large change.
constexpr int mostRuns = 64;

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
    /// The row in the shown list, or in the one that is being made; -1 when it is not in there.
    int row = -1;

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
            m_surroundings.emptyTitle);
    case PreviewRole:
        return withoutLineEnds(beginning(entry.refinedText));
    case RelativeDateRole:
        return m_dates.relative(entry.timestamp, m_surroundings.now, rawValue(m_surroundings.language));
    case LanguageRole:
        return Text::upperCased(entry.language);
    case HasAudioRole:
        return entry.audioFileRelativePath.has_value();
    case PasteTargetRole:
        return entry.pasteTargetAppName.value_or(QString());
    case IsPinnedRole:
        return entry.isPinned;
    case IsTickedRole:
        return m_surroundings.tickedIDs.contains(entry.id);
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
        known.insert(item->entry.id, std::move(item));
    m_all.clear();
    m_all.reserve(size_t(entries.size()));
    std::vector<const Item *> changed;
    for (const HistoryEntry &entry : entries) {
        // Taken out: a file changed by hand may have an id twice, and each entry needs an item of its own.
        ItemPointer item = known.take(entry.id);
        if (!item) {
            item = std::make_shared<Item>(Item { .entry = entry });
        } else if (item->entry != entry) {
            *item = Item { .entry = entry };
            changed.push_back(item.get());
        }
        m_all.push_back(std::move(item));
    }
    m_preparedCount = 0;
    show(matching(m_all, false));
    for (const Item *item : changed) {
        if (item->row >= 0)
            Q_EMIT dataChanged(index(item->row), index(item->row));
    }
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

/// Turns the shown rows into `items` by few steps. The rows that both have in front and at the end stay; of
/// the others some go, one may move, as a pinned one does, and some come. What would take too many steps is
/// replaced as one block.
void HistoryRows::show(Items items) {
    for (const ItemPointer &item : m_shown)
        item->row = -1;
    for (size_t row = 0; row < items.size(); ++row)
        items[row]->row = int(row);

    const auto front = std::mismatch(m_shown.begin(), m_shown.end(), items.begin(), items.end());
    const auto back = std::mismatch(m_shown.rbegin(), std::make_reverse_iterator(front.first), items.rbegin(),
        std::make_reverse_iterator(front.second));
    const auto begin = int(front.first - m_shown.begin());
    const auto end = int(back.first.base() - m_shown.begin());
    const auto newEnd = int(back.second.base() - items.begin());
    if (begin == end && begin == newEnd)
        return;

    const auto isGone = [](const ItemPointer &item) { return item->row < 0; };
    int runs = 0;
    for (int row = begin; row < end; ++row)
        runs += isGone(m_shown[size_t(row)]) && (row == begin || !isGone(m_shown[size_t(row) - 1])) ? 1 : 0;
    // What stays, in the order that it will have; rows that come are told by not being among the old ones.
    Items staying;
    std::copy_if(m_shown.begin() + begin, m_shown.begin() + end, std::back_inserter(staying),
        [&isGone](const ItemPointer &item) { return !isGone(item); });
    std::sort(staying.begin(), staying.end(),
        [](const ItemPointer &left, const ItemPointer &right) { return left->row < right->row; });
    size_t next = 0;
    bool wasStaying = true;
    for (int row = begin; row < newEnd; ++row) {
        const bool isStaying = next < staying.size() && staying[next] == items[size_t(row)];
        next += isStaying ? 1 : 0;
        runs += !isStaying && wasStaying ? 1 : 0;
        wasStaying = isStaying;
    }
    if (runs > mostRuns || staying.empty())
        return replaceBlock(begin, end, items.begin() + begin, items.begin() + newEnd);
    removeGone(begin, end);
    if (!moveOne(begin, begin + int(staying.size()), staying))
        return replaceBlock(
            begin, begin + int(staying.size()), items.begin() + begin, items.begin() + newEnd);
    insertMissing(items, begin, newEnd);
}

void HistoryRows::replaceBlock(int begin, int end, Items::const_iterator from, Items::const_iterator to) {
    if (begin < end) {
        beginRemoveRows({}, begin, end - 1);
        m_shown.erase(m_shown.begin() + begin, m_shown.begin() + end);
        endRemoveRows();
    }
    if (from == to)
        return;
    beginInsertRows({}, begin, begin + int(to - from) - 1);
    m_shown.insert(m_shown.begin() + begin, from, to);
    endInsertRows();
}

void HistoryRows::removeGone(int begin, int end) {
    for (int row = end - 1; row >= begin; --row) {
        if (m_shown[size_t(row)]->row >= 0)
            continue;
        const int last = row;
        while (row > begin && m_shown[size_t(row) - 1]->row < 0)
            --row;
        replaceBlock(row, last + 1, {}, {});
    }
}

/// Brings the rows from `begin` to `end` into the given order if moving one of them does it.
bool HistoryRows::moveOne(int begin, int end, const Items &inNewOrder) {
    const auto first = std::mismatch(m_shown.begin() + begin, m_shown.begin() + end, inNewOrder.begin());
    if (first.first == m_shown.begin() + end)
        return true;
    const auto last
        = std::mismatch(m_shown.rend() - end, std::make_reverse_iterator(first.first), inNewOrder.rbegin());
    const auto from = int(first.first - m_shown.begin());
    const auto to = int(last.first.base() - m_shown.begin());
    const auto newFirst = first.second;
    const auto newLast = last.second.base() - 1;
    const auto oldFirst = m_shown.begin() + from;
    const auto oldLast = m_shown.begin() + to - 1;
    if (*newFirst == *oldLast && std::equal(oldFirst, oldLast, newFirst + 1)) {
        beginMoveRows({}, to - 1, to - 1, {}, from);
        std::rotate(oldFirst, oldLast, m_shown.begin() + to);
        endMoveRows();
        return true;
    }
    if (*newLast == *oldFirst && std::equal(oldFirst + 1, m_shown.begin() + to, newFirst)) {
        beginMoveRows({}, from, from, {}, to);
        std::rotate(oldFirst, oldFirst + 1, m_shown.begin() + to);
        endMoveRows();
        return true;
    }
    return false;
}

void HistoryRows::insertMissing(const Items &items, int begin, int end) {
    for (int row = begin; row < end; ++row) {
        const auto isThere = [&](int there) {
            return size_t(row) < m_shown.size() && m_shown[size_t(row)] == items[size_t(there)];
        };
        if (isThere(row))
            continue;
        int next = row + 1;
        while (next < end && !isThere(next))
            ++next;
        replaceBlock(row, row, items.begin() + row, items.begin() + next);
        row = next;
    }
}

void HistoryRows::setSurroundings(Surroundings surroundings) {
    m_surroundings = std::move(surroundings);
    tellAll({});
}

void HistoryRows::setNow(Date now) {
    m_surroundings.now = now;
    tellAll({ RelativeDateRole });
}

void HistoryRows::setTickedIDs(const QSet<QUuid> &ids) {
    m_surroundings.tickedIDs = ids;
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

QString HistoryRows::previewTitle(const HistoryEntry &entry, const QString &emptyTitle) {
    const QString title = withoutLineEnds(entry.refinedText.isEmpty() ? entry.rawText : entry.refinedText);
    return title.isEmpty() ? emptyTitle : title;
}
