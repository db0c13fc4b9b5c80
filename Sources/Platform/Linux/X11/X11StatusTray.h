#pragma once

#include "Platform/StatusTray.h"

#include <memory>

class QSocketNotifier;
class X11Display;

/// The system tray of an X server's first screen, to which status items are windows.
class X11StatusTray final : public StatusTray {
    Q_OBJECT

public:
    X11StatusTray();
    ~X11StatusTray() override;

    bool isThere() const override;

private:
    void watch();
    void readEvents();

    std::unique_ptr<X11Display> m_display;
    unsigned long m_selection = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
