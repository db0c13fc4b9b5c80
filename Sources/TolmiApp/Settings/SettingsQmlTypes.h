#pragma once

#include "TolmiApp/Settings/SettingsStore.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// Everything that the user has set.
struct SettingsStoreForViews {
    Q_GADGET
    QML_FOREIGN(SettingsStore)
    QML_NAMED_ELEMENT(SettingsStore)
    QML_UNCREATABLE("The program has one already")
};
