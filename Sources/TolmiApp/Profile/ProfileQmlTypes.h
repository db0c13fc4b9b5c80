#pragma once

#include "TolmiApp/Profile/ProfileChipModel.h"
#include "TolmiApp/Profile/ProfileWorkspaceModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The user as the models of views give them.
struct ProfileChipModelForViews {
    Q_GADGET
    QML_FOREIGN(ProfileChipModel)
    QML_NAMED_ELEMENT(ProfileChipModel)
    QML_UNCREATABLE("The model of the view has one")
};

struct ProfileWorkspaceModelForViews {
    Q_GADGET
    QML_FOREIGN(ProfileWorkspaceModel)
    QML_NAMED_ELEMENT(ProfileWorkspaceModel)
    QML_UNCREATABLE("The workspace is given one")
};
