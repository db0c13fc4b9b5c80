#include "Platform/Linux/X11/X11Keyboard.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <array>

namespace {
constexpr std::array<KeySym, 15> modifierKeySyms { XK_Shift_L, XK_Shift_R, XK_Control_L, XK_Control_R,
    XK_Alt_L, XK_Alt_R, XK_Meta_L, XK_Meta_R, XK_Super_L, XK_Super_R, XK_Hyper_L, XK_Hyper_R,
    XK_ISO_Level3_Shift, XK_ISO_Level5_Shift, XK_Mode_switch };
} // namespace

std::optional<int> X11Keyboard::rawKeyOpcode(const X11Display &display) {
    int opcode = 0;
    int ignored = 0;
    // Servers hide the keys from clients that know less than 2.1 while another program has grabbed the
    // keyboard.
    int major = 2;
    int minor = 2;
    if (!XQueryExtension(display.get(), "XInputExtension", &opcode, &ignored, &ignored)
        || XIQueryVersion(display.get(), &major, &minor) != Success) {
        return {};
    }
    return opcode;
}

X11Keyboard::X11Keyboard(X11Display &display)
    : m_display(display) {
    int ignored = 0;
    if (!XkbQueryExtension(m_display.get(), &ignored, &m_firstEvent, &ignored, nullptr, nullptr))
        return;
    constexpr unsigned long layoutEvents = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
    XkbSelectEvents(m_display.get(), XkbUseCoreKbd, layoutEvents, layoutEvents);
    XkbSelectEventDetails(
        m_display.get(), XkbUseCoreKbd, XkbStateNotify, XkbAllStateComponentsMask, XkbGroupStateMask);
}

bool X11Keyboard::handle(XEvent event) {
    if (event.type == MappingNotify) {
        XRefreshKeyboardMapping(&event.xmapping);
        return true;
    }
    if (m_firstEvent == 0 || event.type != m_firstEvent)
        return false;
    XkbEvent change;
    change.core = event;
    if (change.any.xkb_type == XkbMapNotify)
        XkbRefreshKeyboardMapping(&change.map);
    return true;
}

void X11Keyboard::handleArrivedEvents() {
    while (const auto event = m_display.takeEvent())
        handle(*event);
}

KeySym X11Keyboard::keySym(unsigned keyCode) const {
    return keySym(keyCode, group());
}

KeySym X11Keyboard::keySym(unsigned keyCode, unsigned group) const {
    unsigned used = 0;
    KeySym result = NoSymbol;
    XkbLookupKeySym(m_display.get(), KeyCode(keyCode), XkbBuildCoreState(0, group), &used, &result);
    return result;
}

unsigned X11Keyboard::group() const {
    XkbStateRec state {};
    XkbGetState(m_display.get(), XkbUseCoreKbd, &state);
    return state.group;
}

unsigned X11Keyboard::keyCode(KeySym keySym, unsigned otherwise) const {
    return find(keySym, group()).value_or(otherwise);
}

bool X11Keyboard::hasLatinLetters() const {
    constexpr unsigned mostGroups = 4;
    for (unsigned group = 0; group < mostGroups; ++group) {
        if (find(XK_v, group))
            return true;
    }
    return false;
}

std::optional<unsigned> X11Keyboard::find(KeySym keySym, unsigned group) const {
    int first = 0;
    int last = 0;
    XDisplayKeycodes(m_display.get(), &first, &last);
    for (int code = first; code <= last; ++code) {
        if (this->keySym(unsigned(code), group) == keySym)
            return unsigned(code);
    }
    return {};
}

std::vector<unsigned> X11Keyboard::heldKeys() const {
    std::array<char, 32> bits {};
    XQueryKeymap(m_display.get(), bits.data());
    std::vector<unsigned> held;
    for (unsigned code = 0; code < bits.size() * 8; ++code) {
        if (bits[code / 8] & (1 << (code % 8)))
            held.push_back(code);
    }
    return held;
}

std::vector<unsigned> X11Keyboard::heldModifiers() const {
    std::vector<unsigned> held = heldKeys();
    std::erase_if(held, [this, group = group()](unsigned code) {
        return std::ranges::find(modifierKeySyms, keySym(code, group)) == modifierKeySyms.end();
    });
    return held;
}

void X11Keyboard::post(unsigned keyCode, bool isDown) const {
    XTestFakeKeyEvent(m_display.get(), keyCode, isDown, CurrentTime);
}

void X11Keyboard::postMeaninglessKey() const {
    if (keySym(meaninglessKeyCode) != NoSymbol)
        return;
    post(meaninglessKeyCode, true);
    post(meaninglessKeyCode, false);
}
