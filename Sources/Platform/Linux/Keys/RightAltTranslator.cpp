#include "Platform/Linux/Keys/RightAltTranslator.h"

#include "Platform/DictationKey.h"

#include <utility>

namespace {
constexpr qint64 leftOptionKeyCode = 58;
} // namespace

RightAltTranslator::RightAltTranslator(std::function<void(const TapEvent &)> report)
    : m_report(std::move(report)) { }

void RightAltTranslator::setInitialState(bool isRightAltDown, bool isLeftAltDown) {
    m_isRightAltDown = isRightAltDown;
    m_isLeftAltDown = isLeftAltDown;
}

void RightAltTranslator::keyChanged(Key key, bool isDown, double now) {
    advance(now);
    switch (key) {
    case Key::RightAlt:
        rightAltChanged(isDown, now);
        break;
    case Key::LeftAlt:
        m_isLeftAltDown = isDown;
        reportLeftAlt();
        break;
    case Key::Other:
        // A key that comes up was pressed before, so it makes no letter with this press.
        if (isDown)
            otherKeyWentDown(now);
        break;
    }
}

void RightAltTranslator::otherKeyWentDown(double now) {
    const std::optional<double> pressedAt = std::exchange(m_pressedAt, {});
    if (std::exchange(m_due, {}))
        m_isPressDropped = true;
    else if (pressedAt && now <= *pressedAt + joinSeconds)
        m_report(DictationKey::joined);
}

void RightAltTranslator::rightAltChanged(bool isDown, double now) {
    if (!isDown)
        reportHeldBackPress();
    m_isRightAltDown = isDown;
    m_pressedAt = isDown ? std::optional(now) : std::nullopt;
    // With the left key still down, a release alone would look like a press.
    if (std::exchange(m_isPressDropped, false) && !isDown)
        return;
    if (isDown && m_typesLetters)
        m_due = now + chordSeconds;
    else
        reportRightAlt();
}

std::optional<double> RightAltTranslator::deadline() const {
    return m_due;
}

void RightAltTranslator::advance(double now) {
    if (m_due && *m_due <= now)
        reportHeldBackPress();
}

void RightAltTranslator::reportHeldBackPress() {
    if (std::exchange(m_due, {}))
        reportRightAlt();
}

void RightAltTranslator::reportRightAlt() const {
    m_report(isAnyDown() ? DictationKey::pressed : DictationKey::released);
}

void RightAltTranslator::reportLeftAlt() const {
    m_report({ TapEventType::FlagsChanged, leftOptionKeyCode, isAnyDown() ? DictationKey::flag : 0 });
}
