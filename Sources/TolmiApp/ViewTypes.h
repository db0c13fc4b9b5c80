#pragma once

#include "TolmiApp/DictationState.h"
#include "TolmiApp/HistoryWorkspaceModel.h"
#include "TolmiApp/OverlayPanel.h"

#include <QtQml/qqmlregistration.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The kinds of state, as DictationState.Recording and so on.
namespace DictationStateForViews {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(DictationState)
QML_NAMED_ELEMENT(DictationState)
} // namespace DictationStateForViews

/// The model of the floating sign, made by its controller.
struct OverlayViewModelForViews {
    Q_GADGET
    QML_FOREIGN(OverlayViewModel)
    QML_NAMED_ELEMENT(OverlayViewModel)
    QML_UNCREATABLE("The overlay has one already")
};

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
