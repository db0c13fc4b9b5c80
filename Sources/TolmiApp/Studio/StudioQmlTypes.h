#pragma once

#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// What the Studio's window knows, made by the program's root.
struct TolmiStudioWindowModelForViews {
    Q_GADGET
    QML_FOREIGN(TolmiStudioWindowModel)
    QML_NAMED_ELEMENT(TolmiStudioWindowModel)
    QML_UNCREATABLE("The program has one already")
};
