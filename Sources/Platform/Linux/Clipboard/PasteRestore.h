#pragma once

#include "Platform/Linux/Clipboard/ClipboardContent.h"

#include <chrono>
#include <memory>
#include <optional>

class PasteProgress;

/// Decides when the content that a dictated text has displaced comes back. One thread uses it.
///
/// It comes back at once, or when the target of the paste has read the text if that is still to come. Who
/// does not ask for it in time gets it without asking: a main thread that stands still must not have the next
/// copy of the user displaced.
class PasteRestore {
public:
    using Instant = std::chrono::steady_clock::time_point;

    explicit PasteRestore(std::shared_ptr<const PasteProgress> progress);

    /// A dictated text is taking the place of `displaced`.
    void begin(const std::vector<PasteboardItem> &displaced);
    /// Something else is on the clipboard now.
    void end();

    bool isPasting() const { return m_isPasting; }
    /// What the dictated text has displaced.
    const ClipboardContent &displaced() const { return m_displaced; }
    /// What comes back when it is time; null when nothing was asked for yet.
    const ClipboardContent *pending() const { return m_pending ? &m_pending->content : nullptr; }

    /// The target has read the text, or a part of it.
    void noteRead();
    /// Asks for `items` to come back. `ownsText` tells whether the text is still on the clipboard.
    void restore(const std::vector<PasteboardItem> &items, bool ownsText);

    /// When takeDue() is to be called next; absent outside a paste.
    std::optional<Instant> nextDue() const;
    /// What is to come back now. The paste is over then, as it is when the text that waits to be read has
    /// been displaced itself.
    std::optional<ClipboardContent> takeDue(bool ownsText);

private:
    struct Pending {
        ClipboardContent content;
        Instant at;
        bool awaitsReading;
    };

    void schedule(ClipboardContent content, bool ownsText);
    bool isOverdue() const;

    std::shared_ptr<const PasteProgress> m_progress;
    bool m_isPasting = false;
    bool m_isRead = false;
    /// Without having been asked.
    bool m_isRestored = false;
    ClipboardContent m_displaced;
    std::optional<Pending> m_pending;
};
