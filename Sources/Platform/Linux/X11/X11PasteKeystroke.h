#pragma once

#include "Platform/PasteKeystroke.h"

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

struct ActiveWindow;
class InjectedKeys;
class PasteProgress;
class X11Display;
class X11Keyboard;

/// Posts Ctrl+V, Ctrl+Shift+V where a terminal emulator has the focus, or Shift+Insert where that alone
/// pastes. Main thread only.
class X11PasteKeystroke final : public PasteKeystroke {
public:
    /// Notes in `injectedKeys` what it posts and in `progress`, which the clipboard's adapter has too, where
    /// it went. An empty name stands for the display of the environment.
    X11PasteKeystroke(std::shared_ptr<InjectedKeys> injectedKeys, std::shared_ptr<PasteProgress> progress,
        const QByteArray &displayName = {});
    ~X11PasteKeystroke() override;

    bool isModifierHeld() override;
    void post() override;

private:
    void releaseModifiers();
    std::vector<unsigned> commandFor(const std::optional<ActiveWindow> &front) const;
    void press(unsigned keyCode);

    std::shared_ptr<InjectedKeys> m_injectedKeys;
    std::shared_ptr<PasteProgress> m_progress;
    std::unique_ptr<X11Display> m_display;
    std::unique_ptr<X11Keyboard> m_keyboard;
};
