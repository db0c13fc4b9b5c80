#pragma once

#include "Platform/AccessibilityRight.h"
#include "Platform/EventTap.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"
#include "TolmiApp/Dictation/DictationKeySources.h"

#include <atomic>
#include <memory>

class Clock;
class QThread;
class SessionLock;

/// Turns the press and release of the right Option (Alt) key, wherever the focus is, into two callbacks, and
/// a key that soon joins the press into a third. Other sources may press beside the key; DictationKeySources
/// tells whose press counts. While the session is locked a press does nothing; a release still ends what a
/// press began.
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

    /// What became of a press by another source than the key.
    enum class Press {
        /// It counts; onKeyDown has been called.
        Counts,
        /// The source holds the key already.
        Repeated,
        /// Another source holds the key.
        HeldElsewhere,
        /// The session is locked.
        Locked,
    };

    explicit GlobalHotkeyManager(Platform platform);
    ~GlobalHotkeyManager() override;

    bool checkAccessibility() override;
    void promptForAccessibility() override;
    void openAccessibilitySettings() override;
    /// Without the right, asks for it and does nothing else.
    void start() override;
    void stop() override;
    /// Of the key itself, whatever the other sources do.
    bool isHeld() const override { return m_isHotkeyHeld; }

    /// A press by another source than the key.
    Press press(const DictationKeySources::Source &source);
    /// The release of that press; nothing unless `source` holds the key.
    void release(const DictationKeySources::Source &source);
    /// A press by another source than the key has ended otherwise, and needs no release.
    void forgetOtherPress();
    /// Who holds the key; absent while nobody does.
    const std::optional<DictationKeySources::Source> &holder() const { return m_sources.owner(); }

private:
    using Callback = std::function<void()> HotkeyManager::*;

    void handle(const TapEvent &event);
    void handleFlagsChanged(const TapEvent &event);
    void queue(void (GlobalHotkeyManager::*report)());
    void reportKeyDown();
    void reportKeyUp();
    void reportChord();
    void forgetKey();
    void report(Callback callback) const;

    EventTapFactory &m_taps;
    AccessibilityRight &m_right;
    SessionLock &m_lock;
    Clock &m_clock;

    std::shared_ptr<EventTap> m_eventTap;
    std::unique_ptr<QThread> m_thread;
    /// Whether a key-down has been reported without its key-up.
    std::atomic<bool> m_isHotkeyHeld = false;
    DictationKeySources m_sources;
};
