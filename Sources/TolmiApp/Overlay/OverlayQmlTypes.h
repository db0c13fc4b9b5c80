#pragma once

#include "TolmiApp/Overlay/OverlayPanel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The model of the overlay, made by its controller.
struct OverlayViewModelForViews {
    Q_GADGET
    QML_FOREIGN(OverlayViewModel)
    QML_NAMED_ELEMENT(OverlayViewModel)
    QML_UNCREATABLE("The overlay has one already")
};
