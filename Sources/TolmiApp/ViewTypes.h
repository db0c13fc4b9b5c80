#pragma once

#include "TolmiApp/AppUpdater.h"
#include "TolmiApp/CommandCenterModel.h"
#include "TolmiApp/DictationLiveModel.h"
#include "TolmiApp/DictationState.h"
#include "TolmiApp/HealthModel.h"
#include "TolmiApp/HistoryWorkspaceModel.h"
#include "TolmiApp/MenuBarPopupModel.h"
#include "TolmiApp/OnboardingWizardModel.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/ProfileChipModel.h"
#include "TolmiApp/ProfileWorkspaceModel.h"
#include "TolmiApp/SettingsModel.h"
#include "TolmiApp/SettingsStore.h"
#include "TolmiApp/TemplatesModel.h"
#include "TolmiApp/TolmiStudioWindowModel.h"
#include "TolmiApp/UpdateDialogModel.h"

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

/// What the dialog about updates says, and the phases that it has.
struct UpdateDialogModelForViews {
    Q_GADGET
    QML_FOREIGN(UpdateDialogModel)
    QML_NAMED_ELEMENT(UpdateDialogModel)
    QML_UNCREATABLE("The program's root makes it")
};
struct UpdatePromptForViews {
    Q_GADGET
    QML_FOREIGN(UpdatePrompt)
    QML_NAMED_ELEMENT(UpdatePrompt)
    QML_UNCREATABLE("The program's root makes it")
};

/// What the Studio's window knows, made by the program's root.
struct TolmiStudioWindowModelForViews {
    Q_GADGET
    QML_FOREIGN(TolmiStudioWindowModel)
    QML_NAMED_ELEMENT(TolmiStudioWindowModel)
    QML_UNCREATABLE("The program has one already")
};

/// The model of the popup, made by the program's root.
struct MenuBarPopupModelForViews {
    Q_GADGET
    QML_FOREIGN(MenuBarPopupModel)
    QML_NAMED_ELEMENT(MenuBarPopupModel)
    QML_UNCREATABLE("The popup has one already")
};

/// The user as the models of views give them.
struct ProfileChipModelForViews {
    Q_GADGET
    QML_FOREIGN(ProfileChipModel)
    QML_NAMED_ELEMENT(ProfileChipModel)
    QML_UNCREATABLE("The model of the view has one")
};

/// How a check went, as HealthCheckItem.Ok and so on.
namespace HealthCheckItemForViews {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(HealthCheckItem)
QML_NAMED_ELEMENT(HealthCheckItem)
} // namespace HealthCheckItemForViews

/// The models of workspaces, made for each showing.
struct HealthModelForViews {
    Q_GADGET
    QML_FOREIGN(HealthModel)
    QML_NAMED_ELEMENT(HealthModel)
    QML_UNCREATABLE("The workspace is given one")
};
struct TemplatesModelForViews {
    Q_GADGET
    QML_FOREIGN(TemplatesModel)
    QML_NAMED_ELEMENT(TemplatesModel)
    QML_UNCREATABLE("The workspace is given one")
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

/// Everything that the user has set.
struct SettingsStoreForViews {
    Q_GADGET
    QML_FOREIGN(SettingsStore)
    QML_NAMED_ELEMENT(SettingsStore)
    QML_UNCREATABLE("The program has one already")
};

/// The state of the updater.
struct AppUpdaterForViews {
    Q_GADGET
    QML_FOREIGN(AppUpdater)
    QML_NAMED_ELEMENT(AppUpdater)
    QML_UNCREATABLE("The program has one already")
};

struct ProfileWorkspaceModelForViews {
    Q_GADGET
    QML_FOREIGN(ProfileWorkspaceModel)
    QML_NAMED_ELEMENT(ProfileWorkspaceModel)
    QML_UNCREATABLE("The workspace is given one")
};

struct SettingsModelForViews {
    Q_GADGET
    QML_FOREIGN(SettingsModel)
    QML_NAMED_ELEMENT(SettingsModel)
    QML_UNCREATABLE("The workspace is given one")
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
