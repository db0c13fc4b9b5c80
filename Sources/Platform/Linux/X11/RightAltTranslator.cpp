#include "Platform/Linux/X11/RightAltTranslator.h"

#include <utility>

namespace {
constexpr qint64 rightOptionKeyCode = 61;
constexpr qint64 leftOptionKeyCode = 58;
constexpr quint64 alternateFlag = 0x80000;
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
        report(leftOptionKeyCode);
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
        report(rightOptionKeyCode);
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
        report(rightOptionKeyCode);
}

void RightAltTranslator::report(qint64 keyCode) const {
    const bool isAnyDown = m_isRightAltDown || m_isLeftAltDown;
    m_report({ TapEventType::FlagsChanged, keyCode, isAnyDown ? alternateFlag : 0 });
}
