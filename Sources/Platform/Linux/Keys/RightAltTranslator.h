#pragma once

#include "Platform/EventTap.h"

#include <optional>

/// Turns the key presses of a keyboard into what an event tap reports of the two Alt keys.
///
/// Where the right Alt key types letters together with others (AltGr), its press is held back until it is
/// clear that no letter is typed. A key that joins a press which was reported is reported too, for a while.
/// Times are seconds of any one clock that never goes back.
class RightAltTranslator {
public:
    /// How long a press is held back.
    static constexpr double chordSeconds = 0.25;
    /// For how long after a press another key shows that it was not meant for a dictation.
    static constexpr double joinSeconds = 1.0;

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
    void otherKeyWentDown(double now);
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
    /// When the present press began, until another key joins it.
    std::optional<double> m_pressedAt;
    /// Whether another key joined the press, which then has no release either.
    bool m_isPressDropped = false;
};
