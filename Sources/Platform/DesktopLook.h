#pragma once

#include "Platform/Application.h"

#include <QObject>

/// The desktop's settings for colour scheme and reduced motion. Main thread only.
class DesktopLook : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Absent if the desktop has no preference or has not answered yet.
    virtual std::optional<Appearance> appearance() const = 0;

    /// The look of the desktop's panel, as far as it is known.
    virtual Appearance panelAppearance() const = 0;

    /// Whether things should stand still where they can; false while the desktop has not told.
    virtual bool isMotionReduced() const = 0;

Q_SIGNALS:
    /// One of these is different now.
    void changed();
};
