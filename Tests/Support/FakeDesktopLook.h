#pragma once

#include "Platform/DesktopLook.h"

/// A desktop that looks as it is told.
class FakeDesktopLook final : public DesktopLook {
public:
    std::optional<Appearance> appearance() const override { return m_appearance; }
    Appearance panelAppearance() const override { return m_appearance.value_or(Appearance::Dark); }
    bool isMotionReduced() const override { return m_isMotionReduced; }

    void setAppearance(std::optional<Appearance> appearance) {
        if (std::exchange(m_appearance, appearance) != appearance)
            Q_EMIT changed();
    }
    void setMotionReduced(bool isReduced) {
        if (std::exchange(m_isMotionReduced, isReduced) != isReduced)
            Q_EMIT changed();
    }

private:
    std::optional<Appearance> m_appearance;
    bool m_isMotionReduced = false;
};
