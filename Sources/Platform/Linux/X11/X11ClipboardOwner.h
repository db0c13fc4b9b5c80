#pragma once

#include "Platform/Linux/Clipboard/ClipboardContent.h"
#include "Platform/Linux/X11/X11Display.h"

#include <functional>
#include <map>
#include <vector>

/// How the data of a type stands in properties, for types whose properties are not plain bytes named like the
/// type itself.
struct X11ClipboardEncoding {
    Atom type = 0;
    int format = 8;
};
using X11ClipboardEncodings = std::map<QString, X11ClipboardEncoding>;

/// Gives what this program has on a selection to the programs that ask for it.
class X11ClipboardOwner {
public:
    /// Told of each window that was given some of the content.
    using OnRead = std::function<void(Window reader)>;

    /// The display and the encodings outlive the owner. `window` selects property changes.
    X11ClipboardOwner(X11Display &display, Atom selection, Window window,
        const X11ClipboardEncodings &encodings, OnRead onRead = {});

    /// Takes the selection with `content` and says whether the server has it so. Programs that were still
    /// reading the former content get all of it.
    bool take(ClipboardContent content);
    bool owns() const { return m_owns; }
    /// What the server says, news that are still under way included.
    bool ownsNow() const;
    const ClipboardContent &content() const { return m_content; }
    /// The types offered, as atoms.
    std::vector<quint32> targets() const;

    void handle(const XEvent &event);

private:
    /// Data that goes out piece by piece, each one when the one before was fetched.
    struct Transfer {
        Window requestor;
        Atom property;
        X11Property value;
        qsizetype sent;
        X11Display::Instant lastStep;
    };

    void clear(const XSelectionClearEvent &event);
    void answer(const XSelectionRequestEvent &request);
    bool convert(Window requestor, Atom target, Atom property);
    bool convertSeveral(Window requestor, Atom property);
    bool isContent(Atom target) const;
    std::optional<X11Property> value(Atom target) const;
    void give(Window requestor, Atom property, X11Property value);
    void startTransfer(Window requestor, Atom property, X11Property value);
    void continueTransfer(const XPropertyEvent &event);
    void endTransfers(Window requestor);
    void endStaleTransfers();
    qsizetype largestPiece() const;
    Time serverTime() const;

    X11Display &m_display;
    Atom m_selection;
    Window m_window;
    const X11ClipboardEncodings &m_encodings;
    OnRead m_onRead;
    ClipboardContent m_content;
    bool m_owns = false;
    Time m_takenAt = 0;
    /// Number of the request that took the clipboard.
    unsigned long m_takenBy = 0;
    std::vector<Transfer> m_transfers;
};
