#include "Platform/Linux/X11/X11StatusTray.h"

#include <QSocketNotifier>

// The macros of Xlib break Qt's headers, so they come after them.
#include "Platform/Linux/X11/X11Display.h"

#include <X11/extensions/Xfixes.h>

X11StatusTray::X11StatusTray()
    : m_display(X11Display::open()) {
    if (m_display)
        watch();
}

X11StatusTray::~X11StatusTray() = default;

// A tray shows that it is there by owning a selection.
void X11StatusTray::watch() {
    const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(DefaultScreen(m_display->get()));
    m_selection = m_display->atom(name.constData());
    int firstEvent = 0;
    int ignored = 0;
    if (!XFixesQueryExtension(m_display->get(), &firstEvent, &ignored))
        return;
    XFixesSelectSelectionInput(
        m_display->get(), m_display->root(), m_selection, XFixesSetSelectionOwnerNotifyMask);
    XFlush(m_display->get());
    m_notifier = std::make_unique<QSocketNotifier>(ConnectionNumber(m_display->get()), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { readEvents(); });
}

void X11StatusTray::readEvents() {
    while (m_display->takeEvent()) { }
    // It would be readable for ever.
    if (m_display->isBroken())
        m_notifier->setEnabled(false);
    else if (isThere())
        Q_EMIT appeared();
}

bool X11StatusTray::isThere() const {
    return m_display && m_display->selectionOwner(m_selection) != 0;
}
