#include "TolmiApp/Navigation/StudioRouting.h"

namespace {
// The window bears it in every language.
const QString studioTitle = QStringLiteral("Tolmi Studio");
} // namespace

void StudioRouter::open(StudioDestination destination, const OpenWindow &openWindow) {
    setDestination(destination);
    openWindow(TolmiWindowID::studio);
    m_application.activate();
    m_application.orderFront(studioTitle);
}
