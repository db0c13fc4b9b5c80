#pragma once

#include <chrono>
#include <mutex>
#include <optional>

/// A paste as its two halves know it: the clipboard, which gives the text, and the keyboard, which posts the
/// command. Any thread.
class X11PasteProgress {
public:
    /// An X window; 0 is none.
    using Window = unsigned long;

    /// The text is being put on the clipboard, and on the primary selection as well if `offersPrimary`.
    void begin(bool offersPrimary);
    /// The command is about to be posted to `target`.
    void post(Window target);

    /// Whether a command that pastes the primary selection pastes the text.
    bool offersPrimary() const;
    /// Absent while the command has not been posted.
    std::optional<Window> target() const;
    /// Absent while the command has not been posted.
    std::optional<std::chrono::steady_clock::time_point> postedAt() const;

private:
    mutable std::mutex m_mutex;
    bool m_offersPrimary = false;
    std::optional<Window> m_target;
    std::optional<std::chrono::steady_clock::time_point> m_postedAt;
};
