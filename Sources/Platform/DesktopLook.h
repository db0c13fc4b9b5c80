#pragma once

#include "Platform/Application.h"

#include <QObject>

/// How the user wants windows to look and move, as set for the whole desktop. Main thread only.
class DesktopLook : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Absent while the desktop has no preference or has not told yet.
    virtual std::optional<Appearance> appearance() const = 0;

    /// The look of the desktop's panel, as far as it is known.
    virtual Appearance panelAppearance() const = 0;

    /// Whether things should stand still where they can; false while the desktop has not told.
    virtual bool isMotionReduced() const = 0;

Q_SIGNALS:
    /// One of these is different now.
    void changed();
};
