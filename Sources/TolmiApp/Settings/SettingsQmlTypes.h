#pragma once

#include "TolmiApp/Settings/SettingsStore.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

/// The user's settings.
struct SettingsStoreForViews {
    Q_GADGET
    QML_FOREIGN(SettingsStore)
    QML_NAMED_ELEMENT(SettingsStore)
    QML_UNCREATABLE("The program has one already")
};
