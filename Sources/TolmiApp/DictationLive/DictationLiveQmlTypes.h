#pragma once

#include "TolmiApp/DictationLive/DictationLiveModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The model of the stage for dictating, made by the program.
struct DictationLiveModelForViews {
    Q_GADGET
    QML_FOREIGN(DictationLiveModel)
    QML_NAMED_ELEMENT(DictationLiveModel)
    QML_UNCREATABLE("The program makes it")
};
