#pragma once

#include "TolmiApp/SettingsPage/SettingsModel.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

struct SettingsModelForViews {
    Q_GADGET
    QML_FOREIGN(SettingsModel)
    QML_NAMED_ELEMENT(SettingsModel)
    QML_UNCREATABLE("The workspace is given one")
};
