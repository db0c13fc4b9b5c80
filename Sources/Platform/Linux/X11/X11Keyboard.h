#pragma once

#include "Platform/Linux/X11/X11Display.h"

#include <X11/X.h>

#include <vector>

/// The keyboard of a display: what its keys mean in the layout that is in use now, and which are down.
class X11Keyboard {
public:
    /// The key code of the dictation key, the right Alt key, and that of the left one, whatever they mean in
    /// a layout.
    static constexpr unsigned dictationKeyCode = 108;
    static constexpr unsigned leftAltKeyCode = 64;

    /// The number that marks raw key events (XInput 2); nothing when the server has none.
    static std::optional<int> rawKeyOpcode(const X11Display &display);

    /// Has changes of the layout sent as events. The display outlives the keyboard.
    explicit X11Keyboard(X11Display &display);

    /// Takes part in events that tell of a changed layout; says whether this is one.
    bool handle(XEvent event);
    /// Takes every event that has arrived. For displays on which nobody waits for other events.
    void handleArrivedEvents();

    /// What the key means without any modifier.
    KeySym keySym(unsigned keyCode) const;
    /// The first key with that meaning, or `otherwise` when the layout has none.
    unsigned keyCode(KeySym keySym, unsigned otherwise) const;
    /// Whether any of the layouts that can be chosen has Latin letters. Programs know no letter of a shortcut
    /// without.
    bool hasLatinLetters() const;
    /// The key codes of the keys that are down.
    std::vector<unsigned> heldKeys() const;
    /// Those of them that are modifiers: Shift, Control, Alt, Meta, Super, Hyper, and what selects further
    /// levels. Keys that lock, as Caps Lock does, are none.
    std::vector<unsigned> heldModifiers() const;

    /// Posts a press or a release of the key as if it came from the user.
    void post(unsigned keyCode, bool isDown) const;
    /// Posts a key that means nothing, so that a modifier that is held is not alone: programs open menus when
    /// one goes down and up alone.
    void postMeaninglessKey() const;
    /// The key code that postMeaninglessKey() uses.
    static constexpr unsigned meaninglessKeyCode = 248;

private:
    unsigned group() const;
    KeySym keySym(unsigned keyCode, unsigned group) const;
    std::optional<unsigned> find(KeySym keySym, unsigned group) const;

    X11Display &m_display;
    int m_firstEvent = 0;
};
