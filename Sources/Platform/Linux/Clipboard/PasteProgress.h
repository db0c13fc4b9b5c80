#pragma once

#include <chrono>
#include <mutex>
#include <optional>

/// A paste as its two halves know it: the clipboard, which gives the text, and the keyboard, which posts the
/// command. Any thread.
class PasteProgress {
public:
    /// Names the window that gets the command, for an X window by its number; 0 is no known window.
    using Target = unsigned long;

    /// The text is being put on the clipboard, and on the primary selection as well if `offersPrimary`.
    void begin(bool offersPrimary);
    /// The command is about to be posted to `target`.
    void post(Target target);

    /// Whether a command that pastes the primary selection pastes the text.
    bool offersPrimary() const;
    /// Absent while the command has not been posted.
    std::optional<Target> target() const;
    /// Absent while the command has not been posted.
    std::optional<std::chrono::steady_clock::time_point> postedAt() const;

private:
    mutable std::mutex m_mutex;
    bool m_offersPrimary = false;
    std::optional<Target> m_target;
    std::optional<std::chrono::steady_clock::time_point> m_postedAt;
};
