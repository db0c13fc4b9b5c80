#pragma once

#include "Platform/Linux/X11/X11ClipboardOwner.h"

#include <deque>
#include <functional>

/// What another program has on a selection, as far as it has been read.
struct X11ClipboardSnapshot {
    /// Every type, in the owner's order; absent until the owner has told.
    std::optional<std::vector<QString>> offered;
    /// Those that are still to be read, the best first.
    std::deque<QString> left;
    PasteboardItem item;

    std::vector<PasteboardItem> items() const;
};

/// Reads what other programs have on the selections.
class X11ClipboardReader {
public:
    using Instant = X11Display::Instant;
    using Parameter = std::optional<X11Property>;
    /// Handles events, all of them, until the condition holds or the instant has come.
    using HandleEvents = std::function<void(const std::function<bool()> &isDone, Instant until)>;

    /// The display outlives the reader. `window` selects property changes. `encodings` gets an entry for each
    /// type read that is no plain bytes.
    X11ClipboardReader(
        X11Display &display, Window window, X11ClipboardEncodings &encodings, HandleEvents handleEvents);

    /// Reads on where `snapshot` ends, as far as it goes by then.
    void read(X11ClipboardSnapshot &snapshot, Atom selection, Instant until);

    /// Asks the owner of `selection` for `target`, with a parameter for targets that take one; nothing when
    /// the owner refuses, or has not given it all by then.
    std::optional<X11Property> convert(
        Atom selection, Atom target, Instant until, const Parameter &parameter = {});

    void handle(const XEvent &event);

private:
    enum class Stage {
        Asked,
        InPieces,
        Complete,
        Refused,
    };
    /// What has been asked and how far the answer is.
    struct Conversion {
        Atom target = 0;
        Atom property = 0;
        Stage stage = Stage::Refused;
        X11Property value;
    };

    void readTypes(X11ClipboardSnapshot &snapshot, Atom selection, Instant until);
    bool readNext(X11ClipboardSnapshot &snapshot, Atom selection, Instant until);
    std::vector<quint32> worthNaming(std::vector<quint32> targets) const;
    Conversion ask(Atom selection, Atom target, Instant until, const Parameter &parameter = {});
    void receiveAnswer(const XSelectionEvent &event);
    void receivePiece(const XPropertyEvent &event);
    Atom nextProperty();
    bool isTransferProperty(Atom property) const;

    X11Display &m_display;
    Window m_window;
    X11ClipboardEncodings &m_encodings;
    HandleEvents m_handleEvents;
    std::vector<Atom> m_properties;
    size_t m_conversionCount = 0;
    Conversion m_conversion;
};
