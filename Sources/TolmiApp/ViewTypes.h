#pragma once

#include "TolmiApp/DictationState.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/TolmiStudioWindowModel.h"

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

/// What the Studio's window knows, made by the program's root.
struct TolmiStudioWindowModelForViews {
    Q_GADGET
    QML_FOREIGN(TolmiStudioWindowModel)
    QML_NAMED_ELEMENT(TolmiStudioWindowModel)
    QML_UNCREATABLE("The program has one already")
};
