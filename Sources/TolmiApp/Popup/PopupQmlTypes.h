#pragma once

#include "TolmiApp/Popup/MenuBarPopupModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The model of the popup, made by the program's root.
struct MenuBarPopupModelForViews {
    Q_GADGET
    QML_FOREIGN(MenuBarPopupModel)
    QML_NAMED_ELEMENT(MenuBarPopupModel)
    QML_UNCREATABLE("The popup has one already")
};
