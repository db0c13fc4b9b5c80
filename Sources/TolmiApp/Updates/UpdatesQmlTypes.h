#pragma once

#include "TolmiApp/Updates/AppUpdater.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

/// The state of the updater.
struct AppUpdaterForViews {
    Q_GADGET
    QML_FOREIGN(AppUpdater)
    QML_NAMED_ELEMENT(AppUpdater)
    QML_UNCREATABLE("The program has one already")
};

/// The texts and phases of the update dialog.
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
