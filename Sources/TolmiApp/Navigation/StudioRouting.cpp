#include "TolmiApp/Navigation/StudioRouting.h"

QString studioWindowTitle() {
    return L10n::text(L10n::Key::appTitle, AppLanguage::English);
}

void StudioRouter::open(StudioDestination destination, const OpenWindow &openWindow) {
    setDestination(destination);
    openWindow(TolmiWindowID::studio);
    m_application.activate();
    m_application.orderFront(studioWindowTitle());
}
