#pragma once

#include "Platform/PasteKeystroke.h"

#include <QByteArray>

#include <memory>

class InjectedKeys;
class X11Display;
class X11Keyboard;

/// Posts Ctrl+V, or Ctrl+Shift+V where a terminal emulator has the focus. Main thread only.
class X11PasteKeystroke final : public PasteKeystroke {
public:
    /// Notes in `injectedKeys` what it posts. An empty name stands for the display of the environment.
    explicit X11PasteKeystroke(
        std::shared_ptr<InjectedKeys> injectedKeys, const QByteArray &displayName = {});
    ~X11PasteKeystroke() override;

    bool isModifierHeld() override;
    void post() override;

private:
    void releaseModifiers();
    void press(unsigned keyCode);

    std::shared_ptr<InjectedKeys> m_injectedKeys;
    std::unique_ptr<X11Display> m_display;
    std::unique_ptr<X11Keyboard> m_keyboard;
};
