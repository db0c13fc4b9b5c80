#include "TolmiApp/History/RowDifference.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {
/// Many small changes of a list cost its view more than one large change.
constexpr size_t maxRuns = 64;

/// The part of both lists that lies between their equal fronts and their equal ends.
struct DifferingPart {
    int begin = 0;
    int oldEnd = 0;
    int newEnd = 0;
};

DifferingPart differingPart(int oldCount, const std::vector<NewRow> &newRows) {
    DifferingPart part { 0, oldCount, int(newRows.size()) };
    while (part.begin < std::min(part.oldEnd, part.newEnd)
        && newRows[size_t(part.begin)].formerRow == part.begin)
        ++part.begin;
    while (std::min(part.oldEnd, part.newEnd) > part.begin
        && newRows[size_t(part.newEnd) - 1].formerRow == part.oldEnd - 1) {
        --part.oldEnd;
        --part.newEnd;
    }
    return part;
}

/// The runs of rows from `begin` to `end` of which `isInRun` is true.
template <typename Predicate>
std::vector<RowRun> runs(int begin, int end, Predicate isInRun) {
    std::vector<RowRun> found;
    bool isOpen = false;
    for (int row = begin; row < end; ++row) {
        const bool isIn = isInRun(row);
        if (isIn && isOpen)
            ++found.back().count;
        else if (isIn)
            found.push_back({ row, 1 });
        isOpen = isIn;
    }
    return found;
}

/// The former rows of those that stay, in their new order.
std::vector<int> stayingRows(const DifferingPart &part, const std::vector<NewRow> &newRows) {
    std::vector<int> staying;
    for (int row = part.begin; row < part.newEnd; ++row) {
        if (const int formerRow = newRows[size_t(row)].formerRow; formerRow >= 0)
            staying.push_back(formerRow);
    }
    return staying;
}

/// The move of one row that brings ascending numbers into the order of `numbers`, counted from `firstRow`.
/// False when it takes more than one.
bool findMove(const std::vector<int> &numbers, int firstRow, std::optional<RowMove> &move) {
    std::vector<int> ascending = numbers;
    std::sort(ascending.begin(), ascending.end());
    const auto [from, newFrom] = std::mismatch(ascending.begin(), ascending.end(), numbers.begin());
    if (from == ascending.end())
        return true;
    const auto [back, newBack]
        = std::mismatch(ascending.rbegin(), std::make_reverse_iterator(from), numbers.rbegin());
    const auto last = back.base() - 1;
    const auto newLast = newBack.base() - 1;
    const int upper = firstRow + int(from - ascending.begin());
    const int lower = firstRow + int(last - ascending.begin());
    if (*newFrom == *last && std::equal(from, last, newFrom + 1))
        move = RowMove { lower, upper };
    else if (*newLast == *from && std::equal(from + 1, last + 1, newFrom))
        move = RowMove { upper, lower };
    return move.has_value();
}

std::vector<RowRun> wholeRun(int begin, int end) {
    return begin < end ? std::vector { RowRun { begin, end - begin } } : std::vector<RowRun>();
}

std::vector<int> changedRows(const std::vector<NewRow> &newRows) {
    std::vector<int> changes;
    for (size_t row = 0; row < newRows.size(); ++row) {
        if (newRows[row].isChanged && newRows[row].formerRow >= 0)
            changes.push_back(int(row));
    }
    return changes;
}

/// Takes rows away, moves at most one and brings others; false when that is not enough or not worth it.
bool findSmallSteps(
    const DifferingPart &part, const std::vector<NewRow> &newRows, RowDifference &difference) {
    const std::vector<int> staying = stayingRows(part, newRows);
    if (staying.empty())
        return false;
    std::vector<bool> isStaying(size_t(part.oldEnd - part.begin));
    for (const int row : staying)
        isStaying[size_t(row - part.begin)] = true;
    difference.removals
        = runs(part.begin, part.oldEnd, [&](int row) { return !isStaying[size_t(row - part.begin)]; });
    difference.insertions
        = runs(part.begin, part.newEnd, [&](int row) { return newRows[size_t(row)].formerRow < 0; });
    std::reverse(difference.removals.begin(), difference.removals.end());
    return difference.removals.size() + difference.insertions.size() <= maxRuns
        && findMove(staying, part.begin, difference.move);
}
} // namespace

RowDifference rowDifference(int oldCount, const std::vector<NewRow> &newRows) {
    const DifferingPart part = differingPart(oldCount, newRows);
    RowDifference difference;
    if (!findSmallSteps(part, newRows, difference)) {
        difference.removals = wholeRun(part.begin, part.oldEnd);
        difference.insertions = wholeRun(part.begin, part.newEnd);
    }
    difference.changes = changedRows(newRows);
    return difference;
}
