#pragma once

#include "TolmiApp/Templates/TemplatesModel.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

struct TemplatesModelForViews {
    Q_GADGET
    QML_FOREIGN(TemplatesModel)
    QML_NAMED_ELEMENT(TemplatesModel)
    QML_UNCREATABLE("The workspace is given one")
};
