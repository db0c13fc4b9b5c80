#pragma once

/// Posts the paste command to whatever has the focus.
class PasteKeystroke {
public:
    virtual ~PasteKeystroke() = default;

    /// Whether the user holds a modifier key that would change the meaning of the command.
    virtual bool isModifierHeld() = 0;

    /// Posts key-down and key-up of the paste command, one right after the other, with every other modifier
    /// released first. A command that cannot be posted is dropped.
    virtual void post() = 0;
};
