#pragma once

#include "Platform/Linux/Keys/PasteCommand.h"
#include "Platform/PasteKeystroke.h"

#include <functional>
#include <memory>

class UinputKeyboard;

/// Posts the paste command by this program's own keyboard, in whatever window has the focus. Main thread
/// only.
class UinputPasteKeystroke final : public PasteKeystroke {
public:
    /// What the kernel does not know of the window in front and of the user's own keyboards.
    struct Surroundings {
        /// The command for the window that has the focus.
        std::function<PasteCommand()> command;
        std::function<bool()> isModifierHeld;
    };

    UinputPasteKeystroke(std::shared_ptr<UinputKeyboard> keyboard, Surroundings surroundings);

    bool isModifierHeld() override;
    /// Posts in any case: a modifier that the user holds on another keyboard cannot be released from here,
    /// and many window systems keep the modifiers of each keyboard apart.
    void post() override;

private:
    std::shared_ptr<UinputKeyboard> m_keyboard;
    Surroundings m_surroundings;
};
