#pragma once

#include "TolmiApp/Health/HealthModel.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

/// The status of a check, as HealthCheckItem.Ok and so on.
namespace HealthCheckItemForViews {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(HealthCheckItem)
QML_NAMED_ELEMENT(HealthCheckItem)
} // namespace HealthCheckItemForViews

struct HealthModelForViews {
    Q_GADGET
    QML_FOREIGN(HealthModel)
    QML_NAMED_ELEMENT(HealthModel)
    QML_UNCREATABLE("The workspace is given one")
};
