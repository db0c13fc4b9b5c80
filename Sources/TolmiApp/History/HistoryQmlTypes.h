#pragma once

#include "TolmiApp/History/HistoryWorkspaceModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// How much there is of an entry's recording, as HistoryEntryDetail.Available and so on.
namespace HistoryEntryDetailForViews {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(HistoryEntryDetail)
QML_NAMED_ELEMENT(HistoryEntryDetail)
} // namespace HistoryEntryDetailForViews

struct HistoryRowsForViews {
    Q_GADGET
    QML_FOREIGN(HistoryRows)
    QML_NAMED_ELEMENT(HistoryRows)
    QML_UNCREATABLE("The workspace has them")
};

struct HistoryWorkspaceModelForViews {
    Q_GADGET
    QML_FOREIGN(HistoryWorkspaceModel)
    QML_NAMED_ELEMENT(HistoryWorkspaceModel)
    QML_UNCREATABLE("The workspace gets it from the window")
};
