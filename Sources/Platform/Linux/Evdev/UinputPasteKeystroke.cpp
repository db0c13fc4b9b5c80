#include "Platform/Linux/Evdev/UinputPasteKeystroke.h"

#include "Platform/Linux/Evdev/UinputKeyboard.h"

UinputPasteKeystroke::UinputPasteKeystroke(
    std::shared_ptr<UinputKeyboard> keyboard, Surroundings surroundings)
    : m_keyboard(std::move(keyboard))
    , m_surroundings(std::move(surroundings)) { }

bool UinputPasteKeystroke::isModifierHeld() {
    return m_surroundings.isModifierHeld();
}

void UinputPasteKeystroke::post() {
    m_keyboard->type(m_surroundings.command());
}
