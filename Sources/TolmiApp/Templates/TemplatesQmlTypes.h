#pragma once

#include "TolmiApp/Templates/TemplatesModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

struct TemplatesModelForViews {
    Q_GADGET
    QML_FOREIGN(TemplatesModel)
    QML_NAMED_ELEMENT(TemplatesModel)
    QML_UNCREATABLE("The workspace is given one")
};
