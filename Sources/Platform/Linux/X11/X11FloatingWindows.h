#pragma once

#include "Platform/FloatingWindows.h"

#include <memory>

class X11Display;

/// Floating windows on an X server, with or without a compositor. Elsewhere than on X it leaves the window as
/// it is.
class X11FloatingWindows final : public FloatingWindows {
public:
    X11FloatingWindows();
    ~X11FloatingWindows() override;

    void prepare(QWindow &window) override;
    void setShape(QWindow &window, const RoundedRectangle &touched, const RoundedRectangle &drawn) override;
    void watchPressesElsewhere(QWindow &window, std::function<void()> pressed) override;
    QScreen *mainScreen() override;

private:
    /// Of its own, since windows of others may go while they are asked about.
    std::unique_ptr<X11Display> m_display;
};
