#pragma once

#include "Platform/Linux/X11/X11ClipboardOwner.h"

#include <functional>

/// Reads what another program has on the clipboard.
class X11ClipboardReader {
public:
    using Instant = X11Display::Instant;
    /// Handles events, all of them, until the condition holds or the instant has come.
    using HandleEvents = std::function<void(const std::function<bool()> &isDone, Instant until)>;

    /// The display outlives the reader. `window` selects property changes. `encodings` gets an entry for each
    /// type read that is no plain bytes.
    X11ClipboardReader(
        X11Display &display, Window window, X11ClipboardEncodings &encodings, HandleEvents handleEvents);

    /// What could be read by then.
    std::vector<PasteboardItem> items(Instant until);

    /// Asks the owner of `selection` for `target`, with a parameter for targets that take one; nothing when
    /// the owner refuses, or has not given it all by then.
    std::optional<X11Property> convert(
        Atom selection, Atom target, Instant until, const std::optional<X11Property> &parameter = {});

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

    std::optional<PasteboardItem> itemOf(const std::vector<QString> &types, Instant until);
    std::optional<QByteArray> data(const QString &type, Instant until);
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
