#pragma once

#include "Platform/Linux/X11/X11ClipboardOwner.h"
#include "Platform/Linux/X11/X11ClipboardReader.h"
#include "Platform/Linux/X11/X11Keyboard.h"

#include <functional>
#include <memory>

class X11PasteProgress;

/// The clipboard over one connection to the X server, and the primary selection as far as pasting needs it.
/// One thread uses it.
class X11Clipboard {
public:
    using Instant = X11Display::Instant;
    /// What may cut the reading short: the instant by which it must end, asked each time the descriptor has
    /// woken the thread.
    struct Interruption {
        int wakeDescriptor;
        std::function<Instant()> readingEnds;
    };

    X11Clipboard(std::unique_ptr<X11Display> display, std::shared_ptr<X11PasteProgress> progress,
        Interruption interruption);

    /// Whether another one must take its place.
    bool isOver() const { return m_isRetired || m_display->isBroken(); }
    /// Has another one take its place.
    void retire() { m_isRetired = true; }

    /// Handles what has arrived and is due, and waits for more, or for the descriptor.
    void handleEvents();

    /// What items() finds.
    struct Found {
        /// Whether it must be read from the toolkit, which cannot answer.
        bool isToolkits = false;
        std::vector<PasteboardItem> items;
    };

    /// What could be read by then. What was read before is not read again while its owner is the same.
    /// `toolkit` is a number of the connection that is not read from.
    Found items(Instant until, XID toolkit);
    /// Reads ahead what items() will ask for.
    void readAhead(Instant until, XID toolkit);
    bool isToolkits(XID toolkit) const;

    bool take(ClipboardContent content);
    /// `displaced` is what was there before.
    bool takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced);
    bool holdsDictatedText() const;
    /// At once, or when the target of the paste has read the text, if that is still to come. Who does not ask
    /// for it in time gets it without asking: a main thread that stands still must not have the next copy of
    /// the user displaced.
    void restore(const std::vector<PasteboardItem> &items);
    void handOver(Instant until);

private:
    struct Snapshot {
        Window owner;
        quint64 change;
        X11ClipboardSnapshot content;
    };
    struct PendingRestore {
        ClipboardContent content;
        Instant at;
    };

    static Window makeWindow(X11Display &display);
    void watchChanges();
    void handleArrivedEvents();
    void handleEventsUntil(const std::function<bool()> &isDone, Instant until);
    void continueReading(Instant until);
    Instant limit(Instant until) const;
    void noteRead(Window reader);
    bool awaitsReading() const;
    bool isRestoreOverdue() const;
    std::optional<Instant> nextDue() const;
    void beginRestore(const std::vector<PasteboardItem> &items);
    void doWhatIsDue();
    void bringBack(const ClipboardContent &content);
    void endPaste();
    bool needsPrimary() const;
    bool takePrimary(const QString &text);
    ClipboardContent primaryContent(Instant until);

    std::unique_ptr<X11Display> m_display;
    std::shared_ptr<X11PasteProgress> m_progress;
    Interruption m_interruption;
    Atom m_selection;
    Window m_window;
    X11ClipboardEncodings m_encodings;
    X11ClipboardOwner m_owner;
    X11ClipboardOwner m_primary;
    X11ClipboardReader m_reader;
    X11Keyboard m_keyboard;
    bool m_isRetired = false;

    /// The number that marks news of a new owner; none when the server has no such news.
    std::optional<int> m_changeEvent;
    /// How many owners there have been.
    quint64 m_changes = 0;
    std::optional<Snapshot> m_snapshot;

    /// From the dictated text to what it has displaced.
    bool m_isPasting = false;
    bool m_isRead = false;
    /// Without having been asked.
    bool m_isRestored = false;
    ClipboardContent m_displaced;
    std::optional<ClipboardContent> m_displacedPrimary;
    std::optional<PendingRestore> m_pending;
};
