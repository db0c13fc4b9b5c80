#pragma once

#include "Platform/AccessibilityRight.h"
#include "Platform/EventTap.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <atomic>
#include <memory>

class Clock;
class QThread;
class SessionLock;

/// Turns the press and release of the right Option (Alt) key, wherever the focus is, into two callbacks, and
/// a key that soon joins the press into a third. While the session is locked a press does nothing; a release
/// still ends what a press began.
///
/// Main thread only. Held by a std::shared_ptr, since events that are still queued must not keep it alive.
/// The platform's parts outlive it.
class GlobalHotkeyManager final : public HotkeyManager,
                                  public std::enable_shared_from_this<GlobalHotkeyManager> {
public:
    /// What it asks of the platform.
    struct Platform {
        EventTapFactory &taps;
        AccessibilityRight &right;
        SessionLock &lock;
        Clock &clock;
    };

    explicit GlobalHotkeyManager(Platform platform);
    ~GlobalHotkeyManager() override;

    bool checkAccessibility() override;
    void promptForAccessibility() override;
    void openAccessibilitySettings() override;
    /// Without the right, asks for it and does nothing else.
    void start() override;
    void stop() override;
    bool isHeld() const override { return m_isHotkeyHeld; }

private:
    using Callback = std::function<void()> HotkeyManager::*;

    void handle(const TapEvent &event);
    void handleFlagsChanged(const TapEvent &event);
    void notify(Callback callback);
    void report(Callback callback) const;

    EventTapFactory &m_taps;
    AccessibilityRight &m_right;
    SessionLock &m_lock;
    Clock &m_clock;

    std::shared_ptr<EventTap> m_eventTap;
    std::unique_ptr<QThread> m_thread;
    /// Whether a key-down has been reported without its key-up.
    std::atomic<bool> m_isHotkeyHeld = false;
};
