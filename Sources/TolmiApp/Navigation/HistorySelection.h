#pragma once

#include "Foundation/ObservableObject.h"

#include <QUuid>

#include <optional>

/// The history entry that the workspaces of one window share: what is chosen in one stands ready in the
/// other.
class HistorySelection final : public ObservableObject {
    Q_OBJECT
    /// Absent while nothing is chosen; the entry may be gone.
    TOLMI_PUBLISHED(std::optional<QUuid>, selectedHistoryEntryID, setSelectedHistoryEntryID)

public:
    using ObservableObject::ObservableObject;

private:
};
