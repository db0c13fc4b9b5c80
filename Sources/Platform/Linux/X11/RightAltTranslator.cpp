#include "Platform/Linux/X11/RightAltTranslator.h"

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
        if (isDown && std::exchange(m_due, {}))
            m_isPressDropped = true;
        break;
    }
}

void RightAltTranslator::rightAltChanged(bool isDown, double now) {
    if (!isDown)
        reportHeldBackPress();
    m_isRightAltDown = isDown;
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
