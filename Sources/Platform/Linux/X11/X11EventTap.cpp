#include "Platform/Linux/X11/X11EventTap.h"

#include "Platform/Linux/Files/EventDescriptor.h"
#include "Platform/Linux/Keys/RightAltTranslator.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11Keyboard.h"

#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <atomic>

namespace {
using Instant = X11Display::Instant;

/// Seconds of the X server's clock, which counts milliseconds in 32 bits.
class ServerTime {
public:
    /// The instant of an event. Events come in the order of their times.
    double instant(Time time) {
        m_seconds += qint32(quint32(time) - m_time) / 1000.0;
        m_time = quint32(time);
        m_seen = std::chrono::steady_clock::now();
        return m_seconds;
    }
    /// The instant now, as far as it can be told from the latest event.
    double now() const {
        return m_seconds + std::chrono::duration<double>(std::chrono::steady_clock::now() - m_seen).count();
    }
    /// When this clock shows `instant`.
    Instant localInstant(double instant) const {
        return m_seen
            + std::chrono::ceil<std::chrono::milliseconds>(
                std::chrono::duration<double>(instant - m_seconds));
    }

private:
    quint32 m_time = 0;
    double m_seconds = 0;
    Instant m_seen;
};

/// Has the raw keys of every keyboard sent.
void watchRawKeys(X11Display &display) {
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits {};
    XISetMask(bits.data(), XI_RawKeyPress);
    XISetMask(bits.data(), XI_RawKeyRelease);
    XIEventMask mask { XIAllMasterDevices, int(bits.size()), bits.data() };
    XISelectEvents(display.get(), display.root(), &mask, 1);
    // From here on no key is missed, however late the tap's thread starts.
    XSync(display.get(), False);
}

class X11EventTap final : public EventTap {
public:
    X11EventTap(std::unique_ptr<X11Display> display, int opcode, std::shared_ptr<InjectedKeys> injectedKeys,
        std::function<void(const TapEvent &)> handler);

    void run() override;
    void setEnabled(bool enabled) override { m_isEnabled = enabled; }
    void invalidate() override;

private:
    void readLayout();
    void readHeldKeys();
    void handle(XEvent event);
    void keyChanged(unsigned keyCode, bool isDown, double now);

    std::unique_ptr<X11Display> m_display;
    int m_opcode;
    std::shared_ptr<InjectedKeys> m_injectedKeys;
    std::function<void(const TapEvent &)> m_handler;
    X11Keyboard m_keyboard;
    RightAltTranslator m_translator;
    ServerTime m_time;
    EventDescriptor m_wakeUp;
    std::atomic<bool> m_isEnabled = false;
    std::atomic<bool> m_isInvalid = false;
};

X11EventTap::X11EventTap(std::unique_ptr<X11Display> display, int opcode,
    std::shared_ptr<InjectedKeys> injectedKeys, std::function<void(const TapEvent &)> handler)
    : m_display(std::move(display))
    , m_opcode(opcode)
    , m_injectedKeys(std::move(injectedKeys))
    , m_handler(std::move(handler))
    , m_keyboard(*m_display)
    , m_translator([this](const TapEvent &event) {
        if (m_isEnabled)
            m_handler(event);
    }) { }

void X11EventTap::invalidate() {
    m_isInvalid = true;
    m_wakeUp.signal();
}

void X11EventTap::run() {
    readLayout();
    readHeldKeys();
    while (!m_isInvalid && !m_display->isBroken()) {
        // What the user did first is translated first, however late this thread gets to it.
        while (const auto event = m_display->takeEvent())
            handle(*event);
        m_translator.advance(m_time.now());
        const auto deadline = m_translator.deadline();
        m_display->wait(m_wakeUp.get(),
            deadline ? std::optional(m_time.localInstant(*deadline)) : std::optional<Instant>());
    }
}

void X11EventTap::readLayout() {
    const KeySym meaning = m_keyboard.keySym(X11Keyboard::dictationKeyCode);
    constexpr std::array<KeySym, 4> plainMeanings { XK_Alt_R, XK_Alt_L, XK_Meta_R, XK_Meta_L };
    m_translator.setTypesLetters(std::ranges::find(plainMeanings, meaning) == plainMeanings.end());
}

void X11EventTap::readHeldKeys() {
    const std::vector<unsigned> held = m_keyboard.heldKeys();
    const auto isHeld = [&held](unsigned keyCode) { return std::ranges::find(held, keyCode) != held.end(); };
    m_translator.setInitialState(isHeld(X11Keyboard::dictationKeyCode), isHeld(X11Keyboard::leftAltKeyCode));
}

void X11EventTap::handle(XEvent event) {
    if (m_keyboard.handle(event)) {
        readLayout();
        return;
    }
    XGenericEventCookie &cookie = event.xcookie;
    if (cookie.type != GenericEvent || cookie.extension != m_opcode
        || !XGetEventData(m_display->get(), &cookie))
        return;
    const auto &key = *static_cast<const XIRawEvent *>(cookie.data);
    if (!(key.flags & XIKeyRepeat))
        keyChanged(unsigned(key.detail), cookie.evtype == XI_RawKeyPress, m_time.instant(key.time));
    XFreeEventData(m_display->get(), &cookie);
}

void X11EventTap::keyChanged(unsigned keyCode, bool isDown, double now) {
    using Key = RightAltTranslator::Key;
    if (keyCode == X11Keyboard::dictationKeyCode) {
        if (isDown && m_isEnabled && !m_translator.typesLetters())
            m_keyboard.postMeaninglessKey();
        m_translator.keyChanged(Key::RightAlt, isDown, now);
    } else if (keyCode == X11Keyboard::leftAltKeyCode) {
        m_translator.keyChanged(Key::LeftAlt, isDown, now);
    } else if (keyCode != X11Keyboard::meaninglessKeyCode
        && !(isDown && m_injectedKeys->take(keyCode, std::chrono::steady_clock::now()))) {
        m_translator.keyChanged(Key::Other, isDown, now);
    }
}
} // namespace

X11EventTapFactory::X11EventTapFactory(std::shared_ptr<InjectedKeys> injectedKeys, QByteArray displayName)
    : m_injectedKeys(std::move(injectedKeys))
    , m_displayName(std::move(displayName)) { }

std::shared_ptr<EventTap> X11EventTapFactory::create(std::function<void(const TapEvent &)> handler) {
    auto display = X11Display::open(m_displayName);
    if (!display)
        return {};
    const std::optional<int> opcode = X11Keyboard::rawKeyOpcode(*display);
    if (!opcode)
        return {};
    watchRawKeys(*display);
    return std::make_shared<X11EventTap>(std::move(display), *opcode, m_injectedKeys, std::move(handler));
}
