#pragma once

#include "Platform/AccessibilityRight.h"
#include "Platform/EventTap.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <atomic>
#include <memory>

class Clock;
class QThread;

/// Turns the press and release of the right Option (Alt) key, wherever the focus is, into two callbacks, and
/// a key that soon joins the press into a third.
///
/// Main thread only. Held by a std::shared_ptr, since events that are still queued must not keep it alive.
/// The platform's parts outlive it.
class GlobalHotkeyManager final : public HotkeyManager,
                                  public std::enable_shared_from_this<GlobalHotkeyManager> {
public:
    GlobalHotkeyManager(EventTapFactory &taps, AccessibilityRight &right, Clock &clock);
    ~GlobalHotkeyManager() override;

    bool checkAccessibility() override;
    void promptForAccessibility() override;
    void openAccessibilitySettings() override;
    /// Without the right, asks for it and does nothing else.
    void start() override;
    void stop() override;

private:
    void handle(const TapEvent &event);
    void handleFlagsChanged(const TapEvent &event);
    void notify(std::function<void()> HotkeyManager::*callback);

    EventTapFactory &m_taps;
    AccessibilityRight &m_right;
    Clock &m_clock;

    std::shared_ptr<EventTap> m_eventTap;
    std::unique_ptr<QThread> m_thread;
    /// Whether a key-down has been reported without its key-up.
    std::atomic<bool> m_isHotkeyHeld = false;
};
