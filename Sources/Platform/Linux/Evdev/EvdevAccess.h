#pragma once

#include "Platform/Availability.h"
#include "Platform/Linux/Evdev/DeviceControl.h"

#include <QByteArray>
#include <QStringList>

/// Which keyboards this user may read.
struct EvdevAccess {
    /// Looks at every device of the folder, which may take some milliseconds for one that sleeps.
    static EvdevAccess of(const QByteArray &folder, const std::shared_ptr<DeviceControl> &control);

    /// Whether a keyboard can be watched; if not, why, and what the user can do.
    Availability availability() const;

    /// Keyboards that can be read.
    QStringList keyboards;
    /// Input devices that cannot be opened; whether they are keyboards cannot be told.
    QStringList refused;
    QString folder;
};
