#pragma once

#include "TolmiApp/CommandCenter/CommandCenterModel.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

/// The model of the start page, made by the program.
struct CommandCenterModelForViews {
    Q_GADGET
    QML_FOREIGN(CommandCenterModel)
    QML_NAMED_ELEMENT(CommandCenterModel)
    QML_UNCREATABLE("The program makes it")
};
