#pragma once

#include "TolmiApp/Dictation/DictationControl.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The dictation as the models of several workspaces show it.
struct DictationControlForViews {
    Q_GADGET
    QML_FOREIGN(DictationControl)
    QML_NAMED_ELEMENT(DictationControl)
    QML_UNCREATABLE("The model of a workspace has one already")
};
