#include "Platform/Linux/Wayland/WaylandPasteKeystroke.h"

#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Wayland/WaylandActiveWindow.h"

#include <virtual-keyboard.h>
#include <wayland-client.h>

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string_view>

namespace {
using std::chrono::steady_clock;

/// The keys of the command, where every keyboard has them. In the numbers of a keymap the first key of the
/// kernel is the ninth.
constexpr std::string_view keymap = R"(xkb_keymap {
xkb_keycodes { minimum = 8; maximum = 255; <LCTL> = 37; <LFSH> = 50; <AB04> = 55; <INS> = 118; };
xkb_types {
  type "ONE_LEVEL" { modifiers = none; level_name[Level1] = "Any"; };
  type "TWO_LEVEL" { modifiers = Shift; map[Shift] = Level2; level_name[Level1] = "Base"; level_name[Level2] = "Shift"; };
};
xkb_compatibility { interpret Any+AnyOf(all) { action = SetMods(modifiers = modMapMods, clearLocks); }; };
xkb_symbols {
  key <LCTL> { type = "ONE_LEVEL", [ Control_L ] };
  key <LFSH> { type = "ONE_LEVEL", [ Shift_L ] };
  key <AB04> { type = "TWO_LEVEL", [ v, V ] };
  key <INS> { type = "ONE_LEVEL", [ Insert ] };
  modifier_map Control { <LCTL> };
  modifier_map Shift { <LFSH> };
};
};
)";

/// The modifiers in the order that every keymap has.
constexpr uint32_t shiftModifier = 1;
constexpr uint32_t controlModifier = 4;

uint32_t modifierOf(uint32_t key) {
    return key == KEY_LEFTCTRL ? controlModifier : key == KEY_LEFTSHIFT ? shiftModifier : 0;
}

/// The keymap in a file that the compositor can map; its last byte is null.
FileDescriptor keymapFile() {
    FileDescriptor file(memfd_create("keymap", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    const size_t size = keymap.size() + 1;
    if (file.isValid() && write(file.get(), keymap.data(), size) != ssize_t(size))
        file.reset();
    return file;
}

uint32_t milliseconds() {
    return uint32_t(
        std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch())
            .count());
}
} // namespace

WaylandPasteKeystroke::WaylandPasteKeystroke(std::shared_ptr<PasteProgress> progress, QByteArray socketName)
    : m_progress(std::move(progress))
    , m_socketName(std::move(socketName)) {
    // Programs miss the first key of a keyboard that has only just come, so it is there all the time.
    open();
}

WaylandPasteKeystroke::~WaylandPasteKeystroke() {
    if (m_keyboard)
        zwp_virtual_keyboard_v1_destroy(m_keyboard);
}

bool WaylandPasteKeystroke::isOfferedBy(const WaylandConnection &connection) {
    return connection.seat() && connection.offers(zwp_virtual_keyboard_manager_v1_interface.name);
}

bool WaylandPasteKeystroke::open() {
    if (m_keyboard)
        zwp_virtual_keyboard_v1_destroy(std::exchange(m_keyboard, nullptr));
    m_connection = WaylandConnection::open(m_socketName);
    return m_connection && isOfferedBy(*m_connection) && makeKeyboard();
}

bool WaylandPasteKeystroke::makeKeyboard() {
    const WaylandObject<zwp_virtual_keyboard_manager_v1, &zwp_virtual_keyboard_manager_v1_destroy> manager(
        m_connection->bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface, 1));
    const FileDescriptor file = keymapFile();
    if (!manager || !file.isValid())
        return false;
    m_keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager.get(), m_connection->seat());
    zwp_virtual_keyboard_v1_keymap(
        m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(), uint32_t(keymap.size() + 1));
    return m_connection->roundTrip(steady_clock::now() + WaylandConnection::answerTime);
}

void WaylandPasteKeystroke::post() {
    // What has arrived since the last time, the news of a compositor that has gone included.
    if (m_connection)
        m_connection->wait({}, steady_clock::now());
    if ((!m_connection || m_connection->isBroken() || !m_keyboard) && !open())
        return;
    const auto front = WaylandActiveWindow::current(m_socketName);
    const std::vector<uint32_t> keys = commandFor(front);
    m_progress->post(front ? front->window : 1);
    for (const uint32_t key : keys)
        press(key, true);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        press(*key, false);
    m_connection->roundTrip(steady_clock::now() + WaylandConnection::answerTime);
}

/// The keys in the order in which they go down.
std::vector<uint32_t> WaylandPasteKeystroke::commandFor(const std::optional<ActiveWindow> &front) const {
    // Where the clipboard's adapter has not seen the need, the primary selection is somebody else's.
    if (m_progress->offersPrimary())
        return { KEY_LEFTSHIFT, KEY_INSERT };
    if (front && front->isTerminal())
        return { KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_V };
    return { KEY_LEFTCTRL, KEY_V };
}

void WaylandPasteKeystroke::press(uint32_t key, bool isDown) {
    zwp_virtual_keyboard_v1_key(m_keyboard, milliseconds(), key,
        isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    const uint32_t modifier = modifierOf(key);
    if (modifier == 0)
        return;
    m_modifiers = isDown ? m_modifiers | modifier : m_modifiers & ~modifier;
    zwp_virtual_keyboard_v1_modifiers(m_keyboard, m_modifiers, 0, 0, 0);
}
