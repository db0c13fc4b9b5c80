#pragma once

#include "Platform/EventTap.h"
#include "Platform/Linux/Evdev/DeviceControl.h"

#include <QByteArray>

#include <atomic>

/// Event taps that watch the keyboards of the kernel, whatever window system and whatever window has the
/// focus. They grab nothing and hold no key back. Keyboards that are plugged in, or that the user gets the
/// right to read, while a tap runs are watched from then on.
///
/// What this program types by its own keyboard is not reported.
class EvdevEventTapFactory final : public EventTapFactory {
public:
    /// What the taps watch, and what they cannot tell themselves.
    struct Surroundings {
        QByteArray folder = "/dev/input";
        std::shared_ptr<DeviceControl> control = std::make_shared<KernelDeviceControl>();
        /// Whether the right Alt key types letters together with others (AltGr) in the present layout. Asked
        /// on the tap's thread at each press.
        std::function<bool()> typesLetters = [] { return true; };
        /// Called on the tap's thread at each press of a right Alt key that types no letters: programs open
        /// menus when it goes down and up alone.
        std::function<void()> plainAltWentDown = [] {};
        /// Seconds of the steady clock, which the kernel's events bear too.
        std::function<double()> now = &steadySeconds;
    };

    explicit EvdevEventTapFactory(Surroundings surroundings);

    std::shared_ptr<EventTap> create(std::function<void(const TapEvent &)> handler) override;

    /// Whether the running tap sees a modifier key down that would spoil a shortcut. False without one. Any
    /// thread.
    bool isModifierHeld() const { return *m_isModifierHeld; }

private:
    static double steadySeconds();

    Surroundings m_surroundings;
    std::shared_ptr<std::atomic<bool>> m_isModifierHeld = std::make_shared<std::atomic<bool>>(false);
};
