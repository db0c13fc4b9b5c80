#pragma once

/// Posts the paste command to the focused window.
class PasteKeystroke {
public:
    virtual ~PasteKeystroke() = default;

    /// Whether the user holds a modifier key that would turn the command into another one.
    virtual bool isModifierHeld() = 0;

    /// Releases all other modifiers, then posts key-down and key-up of the paste command. Does nothing if it
    /// cannot be posted.
    virtual void post() = 0;
};
