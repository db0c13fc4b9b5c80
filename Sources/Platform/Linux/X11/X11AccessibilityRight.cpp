#include "Platform/Linux/X11/X11AccessibilityRight.h"

#include "Platform/Linux/X11/X11Keyboard.h"

#include <X11/extensions/XTest.h>

namespace {
bool canPostKeys(const X11Display &display) {
    int ignored = 0;
    return XTestQueryExtension(display.get(), &ignored, &ignored, &ignored, &ignored);
}
} // namespace

X11AccessibilityRight::X11AccessibilityRight(
    std::function<void(const QString &)> tellHow, QByteArray displayName)
    : m_tellHow(std::move(tellHow))
    , m_displayName(std::move(displayName)) { }

Availability X11AccessibilityRight::state() {
    const auto display = X11Display::open(m_displayName);
    if (!display)
        return Availability::unavailable(
            QStringLiteral("There is no X display. Start Tolmi from a terminal of your desktop session."));
    if (!X11Keyboard::rawKeyOpcode(*display))
        return Availability::unavailable(QStringLiteral("The X server lacks the XInput 2 extension. Use a "
                                                        "server that has it, for example Xorg or Xwayland."));
    if (!canPostKeys(*display))
        return Availability::unavailable(
            QStringLiteral("The X server has the XTEST extension switched off. Start it without \"-tst\" or "
                           "\"-extension XTEST\"."));
    return Availability::available();
}

void X11AccessibilityRight::prompt() {
    const Availability availability = state();
    if (!availability.isAvailable() && m_tellHow)
        m_tellHow(availability.reason);
}
