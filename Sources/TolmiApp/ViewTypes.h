#pragma once

#include "TolmiApp/CommandCenterModel.h"
#include "TolmiApp/DictationLiveModel.h"
#include "TolmiApp/DictationState.h"
#include "TolmiApp/OnboardingWizardModel.h"
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

/// The dictation as the models of several workspaces show it.
struct DictationControlForViews {
    Q_GADGET
    QML_FOREIGN(DictationControl)
    QML_NAMED_ELEMENT(DictationControl)
    QML_UNCREATABLE("The model of a workspace has one already")
};

/// The model of the start page, made by the program.
struct CommandCenterModelForViews {
    Q_GADGET
    QML_FOREIGN(CommandCenterModel)
    QML_NAMED_ELEMENT(CommandCenterModel)
    QML_UNCREATABLE("The program makes it")
};

/// The model of the stage for dictating, made by the program.
struct DictationLiveModelForViews {
    Q_GADGET
    QML_FOREIGN(DictationLiveModel)
    QML_NAMED_ELEMENT(DictationLiveModel)
    QML_UNCREATABLE("The program makes it")
};

/// The model of the wizard of the first start, made by the program.
struct OnboardingWizardModelForViews {
    Q_GADGET
    QML_FOREIGN(OnboardingWizardModel)
    QML_NAMED_ELEMENT(OnboardingWizardModel)
    QML_UNCREATABLE("The program makes it")
};
