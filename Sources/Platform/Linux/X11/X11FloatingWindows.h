#pragma once

#include "Platform/FloatingWindows.h"

/// Floating windows on an X server, with or without a compositor. Elsewhere than on X it leaves the window as
/// it is.
class X11FloatingWindows final : public FloatingWindows {
public:
    void prepare(QWindow &window) override;
    void setShape(QWindow &window, const RoundedRectangle &touched, const RoundedRectangle &drawn) override;
    void watchPressesElsewhere(QWindow &window, std::function<void()> pressed) override;
};
