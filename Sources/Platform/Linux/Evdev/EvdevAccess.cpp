#include "Platform/Linux/Evdev/EvdevAccess.h"

#include "Platform/Linux/Evdev/EvdevKeyboards.h"

#include <QFile>

EvdevAccess EvdevAccess::of(const QByteArray &folder, const std::shared_ptr<DeviceControl> &control) {
    EvdevAccess access;
    access.folder = QFile::decodeName(folder);
    for (const QByteArray &name : EvdevKeyboards::deviceNames(folder)) {
        const QByteArray path = folder + '/' + name;
        const EvdevKeyboard::Kind kind = EvdevKeyboard::open(path, control).kind;
        if (kind == EvdevKeyboard::Kind::Keyboard)
            access.keyboards.append(QFile::decodeName(path));
        else if (kind == EvdevKeyboard::Kind::Refused)
            access.refused.append(QFile::decodeName(path));
    }
    return access;
}

Availability EvdevAccess::availability() const {
    if (!keyboards.isEmpty())
        return Availability::available();
    if (refused.isEmpty())
        return Availability::unavailable(
            QStringLiteral("There is no keyboard in %1. Connect one; Tolmi notices it.").arg(folder));
    return Availability::unavailable(
        QStringLiteral("Tolmi may not read the keyboards: %1 cannot be opened. Allow Tolmi to use the right "
                       "Alt key everywhere; this asks for an administrator's password.")
            .arg(refused.join(QStringLiteral(", "))));
}
