#pragma once

#include "Platform/EventTap.h"

#include <optional>

/// Turns the key presses of a keyboard into what an event tap reports of the two Alt keys.
///
/// Where the right Alt key types letters together with others (AltGr), its press is held back until it is
/// clear that no letter is typed. Times are seconds of any one clock that never goes back.
class RightAltTranslator {
public:
    /// How long a press is held back.
    static constexpr double chordSeconds = 0.25;

    /// What a key is to the translation.
    enum class Key {
        RightAlt,
        LeftAlt,
        Other,
    };

    explicit RightAltTranslator(std::function<void(const TapEvent &)> report);

    /// Whether the right Alt key types letters together with others from its next press on.
    void setTypesLetters(bool typesLetters) { m_typesLetters = typesLetters; }
    bool typesLetters() const { return m_typesLetters; }

    /// Which of the two keys are down before the first event.
    void setInitialState(bool isRightAltDown, bool isLeftAltDown);

    void keyChanged(Key key, bool isDown, double now);

    /// When advance() has something to do unless a key comes first; nothing when no press is held back.
    std::optional<double> deadline() const;
    void advance(double now);

private:
    void rightAltChanged(bool isDown, double now);
    void reportHeldBackPress();
    bool isAnyDown() const { return m_isRightAltDown || m_isLeftAltDown; }
    void reportRightAlt() const;
    void reportLeftAlt() const;

    std::function<void(const TapEvent &)> m_report;
    bool m_typesLetters = false;
    bool m_isRightAltDown = false;
    bool m_isLeftAltDown = false;
    /// When the press that is held back is due.
    std::optional<double> m_due;
    /// Whether another key joined the press, which then has no release either.
    bool m_isPressDropped = false;
};
