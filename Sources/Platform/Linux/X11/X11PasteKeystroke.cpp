#include "Platform/Linux/X11/X11PasteKeystroke.h"

#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11ActiveWindow.h"
#include "Platform/Linux/X11/X11Keyboard.h"

#include <X11/keysym.h>

namespace {
/// Where the keys lie on a keyboard whose layout lacks them; programs match shortcuts by place then.
constexpr unsigned usualControlKeyCode = 37;
constexpr unsigned usualShiftKeyCode = 50;
constexpr unsigned usualVKeyCode = 55;
constexpr unsigned usualInsertKeyCode = 118;
} // namespace

X11PasteKeystroke::X11PasteKeystroke(std::shared_ptr<InjectedKeys> injectedKeys,
    std::shared_ptr<PasteProgress> progress, const QByteArray &displayName)
    : m_injectedKeys(std::move(injectedKeys))
    , m_progress(std::move(progress))
    , m_display(X11Display::open(displayName))
    , m_keyboard(m_display ? std::make_unique<X11Keyboard>(*m_display) : nullptr) { }

X11PasteKeystroke::~X11PasteKeystroke() = default;

bool X11PasteKeystroke::isModifierHeld() {
    if (!m_keyboard)
        return false;
    m_keyboard->handleArrivedEvents();
    return !m_keyboard->heldModifiers().empty();
}

void X11PasteKeystroke::post() {
    if (!m_keyboard)
        return;
    m_keyboard->handleArrivedEvents();
    releaseModifiers();
    const auto front = X11ActiveWindow::current(*m_display);
    const std::vector<unsigned> keys = commandFor(front);
    m_progress->post(front ? front->window : None);
    for (const unsigned key : keys)
        press(key);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        m_keyboard->post(*key, false);
    XFlush(m_display->get());
}

/// The keys in the order in which they go down.
std::vector<unsigned> X11PasteKeystroke::commandFor(const std::optional<ActiveWindow> &front) const {
    const unsigned control = m_keyboard->keyCode(XK_Control_L, usualControlKeyCode);
    const unsigned shift = m_keyboard->keyCode(XK_Shift_L, usualShiftKeyCode);
    const unsigned v = m_keyboard->keyCode(XK_v, usualVKeyCode);
    // Where the clipboard's adapter has not seen the need, the primary selection is somebody else's.
    if (m_progress->offersPrimary())
        return { shift, m_keyboard->keyCode(XK_Insert, usualInsertKeyCode) };
    if (front && front->isTerminal())
        return { control, shift, v };
    return { control, v };
}

void X11PasteKeystroke::releaseModifiers() {
    const std::vector<unsigned> held = m_keyboard->heldModifiers();
    if (!held.empty())
        m_keyboard->postMeaninglessKey();
    for (const unsigned key : held)
        m_keyboard->post(key, false);
}

void X11PasteKeystroke::press(unsigned keyCode) {
    m_injectedKeys->willPress(keyCode, std::chrono::steady_clock::now());
    m_keyboard->post(keyCode, true);
}
