#pragma once

#include "TolmiApp/SettingsPage/SettingsModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

struct SettingsModelForViews {
    Q_GADGET
    QML_FOREIGN(SettingsModel)
    QML_NAMED_ELEMENT(SettingsModel)
    QML_UNCREATABLE("The workspace is given one")
};
