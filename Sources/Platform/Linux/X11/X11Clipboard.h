#pragma once

#include "Platform/Linux/Clipboard/ClipboardConnection.h"
#include "Platform/Linux/Clipboard/PasteRestore.h"
#include "Platform/Linux/X11/X11ClipboardOwner.h"
#include "Platform/Linux/X11/X11ClipboardReader.h"
#include "Platform/Linux/X11/X11Keyboard.h"

#include <memory>

class PasteProgress;

/// The clipboard over one connection to the X server.
class X11Clipboard final : public ClipboardConnection {
public:
    X11Clipboard(std::unique_ptr<X11Display> display, std::shared_ptr<PasteProgress> progress,
        Interruption interruption);

    bool isOver() const override { return m_isRetired || m_display->isBroken(); }
    void retire() override { m_isRetired = true; }
    void handleEvents() override;
    /// The mark is a number of the toolkit's connection.
    Found items(Instant until, ToolkitMark toolkit) override;
    void readAhead(Instant until, ToolkitMark toolkit) override;
    bool isToolkits(ToolkitMark toolkit) override;
    bool take(ClipboardContent content) override;
    bool takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced) override;
    bool holdsDictatedText() override;
    void restore(const std::vector<PasteboardItem> &items) override;
    void handOver(Instant until) override;

private:
    struct Snapshot {
        Window owner;
        quint64 change;
        X11ClipboardSnapshot content;
    };

    static Window makeWindow(X11Display &display);
    void watchChanges();
    void handleArrivedEvents();
    void handleEventsUntil(const std::function<bool()> &isDone, Instant until);
    void continueReading(Instant until);
    Instant limit(Instant until) const;
    void noteRead(Window reader);
    void doWhatIsDue();
    void endPaste();
    void endPasteWith(ClipboardContent content);
    void bringPrimaryBack();
    bool needsPrimary() const;
    bool takePrimary(const QString &text);
    ClipboardContent primaryContent(Instant until);

    std::unique_ptr<X11Display> m_display;
    std::shared_ptr<PasteProgress> m_progress;
    PasteRestore m_restore;
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
    std::optional<ClipboardContent> m_displacedPrimary;
};
