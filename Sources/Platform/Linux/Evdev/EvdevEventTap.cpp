#include "Platform/Linux/Evdev/EvdevEventTap.h"

#include "Platform/Linux/Evdev/EvdevKeyboards.h"
#include "Platform/Linux/Files/EventDescriptor.h"
#include "Platform/Linux/Keys/RightAltTranslator.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <limits>

#include <linux/input-event-codes.h>
#include <poll.h>

namespace {
constexpr std::array<unsigned, 8> modifierCodes { KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTSHIFT, KEY_RIGHTSHIFT,
    KEY_LEFTALT, KEY_RIGHTALT, KEY_LEFTMETA, KEY_RIGHTMETA };

/// One of the two Alt keys of all keyboards, which together act as one.
class SharedKey {
public:
    void setCount(int count) { m_count = count; }
    bool isDown() const { return m_count > 0; }
    /// Whether a press or release on one keyboard changes it.
    bool change(bool isDown) {
        const bool before = this->isDown();
        m_count += isDown ? 1 : -1;
        return this->isDown() != before;
    }

private:
    int m_count = 0;
};

class EvdevEventTap final : public EventTap {
public:
    EvdevEventTap(const EvdevEventTapFactory::Surroundings &surroundings,
        std::shared_ptr<std::atomic<bool>> isModifierHeld, std::function<void(const TapEvent &)> handler);

    bool isValid() const { return m_keyboards.isValid() && m_wakeUp.get() >= 0; }

    void run() override;
    void setEnabled(bool enabled) override { m_isEnabled = enabled; }
    void invalidate() override;

private:
    void wait() const;
    int millisecondsToWait() const;
    void readKeys();
    std::vector<KeyChange> takeArrived(double now);
    void translate(const KeyChange &change);
    void rightAltWentDown();
    void noteHeldKeys();

    EvdevKeyboards m_keyboards;
    EvdevEventTapFactory::Surroundings m_surroundings;
    std::shared_ptr<std::atomic<bool>> m_isModifierHeld;
    std::function<void(const TapEvent &)> m_handler;
    RightAltTranslator m_translator;
    /// What has been read but waits for its turn.
    std::vector<KeyChange> m_arrived;
    SharedKey m_rightAlt;
    SharedKey m_leftAlt;
    /// The latest time that the translator knows.
    double m_time = std::numeric_limits<double>::lowest();
    EventDescriptor m_wakeUp;
    std::atomic<bool> m_isEnabled = false;
    std::atomic<bool> m_isInvalid = false;
};

EvdevEventTap::EvdevEventTap(const EvdevEventTapFactory::Surroundings &surroundings,
    std::shared_ptr<std::atomic<bool>> isModifierHeld, std::function<void(const TapEvent &)> handler)
    : m_keyboards(surroundings.folder, surroundings.control)
    , m_surroundings(surroundings)
    , m_isModifierHeld(std::move(isModifierHeld))
    , m_handler(std::move(handler))
    , m_translator([this](const TapEvent &event) {
        if (m_isEnabled)
            m_handler(event);
    }) { }

void EvdevEventTap::invalidate() {
    m_isInvalid = true;
    m_wakeUp.signal();
}

void EvdevEventTap::run() {
    // Here and not before, because a sleeping keyboard may take its time to wake up.
    if (!m_isInvalid)
        m_keyboards.openAll();
    noteHeldKeys();
    while (!m_isInvalid) {
        wait();
        if (!m_isInvalid)
            readKeys();
    }
    *m_isModifierHeld = false;
}

void EvdevEventTap::wait() const {
    std::vector<pollfd> all = m_keyboards.awaited();
    all.push_back({ m_wakeUp.get(), POLLIN, 0 });
    ::poll(all.data(), all.size(), millisecondsToWait());
}

int EvdevEventTap::millisecondsToWait() const {
    constexpr int untilSomethingComes = -1;
    if (!m_arrived.empty())
        return 0;
    const auto deadline = m_translator.deadline();
    if (!deadline)
        return untilSomethingComes;
    return int(std::clamp(std::ceil((*deadline - m_surroundings.now()) * 1000), 0.0, double(INT_MAX)));
}

void EvdevEventTap::readKeys() {
    // Every event from before this moment can be read now. So what the user did first is translated first,
    // however late this thread gets to it and on however many keyboards it was. Before an event that came
    // while this thread read another keyboard, something may have come there: it waits for the next round.
    const double now = m_surroundings.now();
    for (const KeyChange &change : takeArrived(now))
        translate(change);
    if (m_translator.deadline()) {
        m_time = std::max(m_time, now);
        m_translator.advance(m_time);
    }
    noteHeldKeys();
}

std::vector<KeyChange> EvdevEventTap::takeArrived(double now) {
    m_keyboards.read(m_arrived, now);
    const double latest = m_surroundings.now();
    for (KeyChange &change : m_arrived)
        change.time = std::min(change.time, latest);
    std::ranges::stable_sort(m_arrived, {}, &KeyChange::time);
    const auto rest = std::ranges::upper_bound(m_arrived, now, {}, &KeyChange::time);
    std::vector<KeyChange> due(m_arrived.begin(), rest);
    m_arrived.erase(m_arrived.begin(), rest);
    return due;
}

void EvdevEventTap::translate(const KeyChange &change) {
    using Key = RightAltTranslator::Key;
    m_time = std::max(m_time, change.time);
    if (change.code == KEY_RIGHTALT) {
        if (!m_rightAlt.change(change.isDown))
            return;
        if (change.isDown)
            rightAltWentDown();
        m_translator.keyChanged(Key::RightAlt, change.isDown, m_time);
    } else if (change.code == KEY_LEFTALT) {
        if (m_leftAlt.change(change.isDown))
            m_translator.keyChanged(Key::LeftAlt, change.isDown, m_time);
    } else {
        m_translator.keyChanged(Key::Other, change.isDown, m_time);
    }
}

void EvdevEventTap::rightAltWentDown() {
    m_translator.setTypesLetters(m_surroundings.typesLetters());
    if (m_isEnabled && !m_translator.typesLetters())
        m_surroundings.plainAltWentDown();
}

void EvdevEventTap::noteHeldKeys() {
    *m_isModifierHeld = std::ranges::any_of(
        modifierCodes, [this](unsigned code) { return m_keyboards.heldCount(code) > 0; });
    // A key that a new keyboard holds already was pressed unseen: it counts as down but starts nothing.
    if (!m_arrived.empty() || !m_keyboards.takeHasChanged())
        return;
    m_rightAlt.setCount(m_keyboards.heldCount(KEY_RIGHTALT));
    m_leftAlt.setCount(m_keyboards.heldCount(KEY_LEFTALT));
    m_translator.setInitialState(m_rightAlt.isDown(), m_leftAlt.isDown());
}
} // namespace

EvdevEventTapFactory::EvdevEventTapFactory(Surroundings surroundings)
    : m_surroundings(std::move(surroundings)) { }

std::shared_ptr<EventTap> EvdevEventTapFactory::create(std::function<void(const TapEvent &)> handler) {
    auto tap = std::make_shared<EvdevEventTap>(m_surroundings, m_isModifierHeld, std::move(handler));
    if (!tap->isValid())
        return {};
    return tap;
}

double EvdevEventTapFactory::steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}
