#pragma once

#include "Platform/Linux/Wayland/WaylandConnection.h"
#include "Platform/PasteKeystroke.h"

class PasteProgress;
struct ActiveWindow;
struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

/// Posts Ctrl+V, Ctrl+Shift+V where a terminal emulator has the focus, or Shift+Insert where that alone
/// pastes, on a keyboard of its own, whose layout does not depend on the user's. Main thread only.
class WaylandPasteKeystroke final : public PasteKeystroke {
public:
    /// Notes in `progress`, which the clipboard's adapter has too, when it posts. An empty name stands for
    /// the socket of the environment.
    explicit WaylandPasteKeystroke(std::shared_ptr<PasteProgress> progress, QByteArray socketName = {});
    ~WaylandPasteKeystroke() override;

    /// Whether the compositor lets programs type.
    static bool isOfferedBy(const WaylandConnection &connection);

    /// Nothing that the user holds on another keyboard changes what is typed on this one.
    bool isModifierHeld() override { return false; }
    void post() override;

private:
    bool open();
    bool makeKeyboard();
    std::vector<uint32_t> commandFor(const std::optional<ActiveWindow> &front) const;
    void press(uint32_t key, bool isDown);

    std::shared_ptr<PasteProgress> m_progress;
    const QByteArray m_socketName;
    std::unique_ptr<WaylandConnection> m_connection;
    zwp_virtual_keyboard_v1 *m_keyboard = nullptr;
    uint32_t m_modifiers = 0;
};
