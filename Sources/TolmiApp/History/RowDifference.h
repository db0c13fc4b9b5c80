#pragma once

#include <optional>
#include <vector>

/// A row as a list will have it.
struct NewRow {
    /// Where it stood in the list before; -1 when it was not in there. No two rows stood in the same place.
    int formerRow = -1;
    /// It says something else than before.
    bool isChanged = false;
};

/// Neighbouring rows.
struct RowRun {
    int first = 0;
    int count = 0;

    friend bool operator==(const RowRun &, const RowRun &) = default;
};

/// One row that leaves `from` and stands at `to` afterwards.
struct RowMove {
    int from = 0;
    int to = 0;

    friend bool operator==(const RowMove &, const RowMove &) = default;
};

/// The steps from one list of rows to another, to be done in the order of the fields. Each step counts in the
/// list as the steps before it left it.
struct RowDifference {
    /// From the last to the first, so that these are rows of the old list.
    std::vector<RowRun> removals;
    std::optional<RowMove> move;
    /// From the first to the last, so that these are rows of the new list.
    std::vector<RowRun> insertions;
    /// Rows of the new list that were in the old one and say something else now.
    std::vector<int> changes;

    friend bool operator==(const RowDifference &, const RowDifference &) = default;
};

/// How a list of `oldCount` rows becomes `newRows` by few steps. The rows that both have in front and at the
/// end stay; of the others some go, one may move, as a pinned one does, and some come. What would take too
/// many steps is replaced as one block.
RowDifference rowDifference(int oldCount, const std::vector<NewRow> &newRows);
