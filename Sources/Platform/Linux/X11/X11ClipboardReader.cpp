#include "Platform/Linux/X11/X11ClipboardReader.h"

#include <algorithm>

namespace {
/// Each question gets a property of its own in turn, so that a late answer to an earlier one is known.
constexpr int propertyCount = 32;
} // namespace

X11ClipboardReader::X11ClipboardReader(
    X11Display &display, Window window, X11ClipboardEncodings &encodings, HandleEvents handleEvents)
    : m_display(display)
    , m_window(window)
    , m_encodings(encodings)
    , m_handleEvents(std::move(handleEvents)) {
    for (int number = 0; number < propertyCount; ++number)
        m_properties.push_back(m_display.atom(QStringLiteral("_TOLMI_TRANSFER_%1").arg(number)));
}

std::vector<PasteboardItem> X11ClipboardReader::items(Instant until) {
    const Atom clipboard = m_display.atom("CLIPBOARD");
    if (XGetSelectionOwner(m_display.get(), clipboard) == None)
        return {};
    const auto targets = convert(clipboard, m_display.atom("TARGETS"), until);
    if (!targets)
        return {};
    std::vector<QString> offered;
    for (const quint32 target : unpackedProperty(*targets))
        offered.push_back(m_display.atomName(target));
    const auto item = itemOf(offered, until);
    return item ? std::vector { *item } : std::vector<PasteboardItem>();
}

std::optional<PasteboardItem> X11ClipboardReader::itemOf(const std::vector<QString> &offered, Instant until) {
    PasteboardItem item;
    for (const QString &type : clipboardTypesToRead(offered)) {
        if (const auto bytes = data(type, until))
            item.representations.emplace_back(type, *bytes);
    }
    if (item.representations.empty())
        return {};
    std::ranges::stable_sort(item.representations, {},
        [&offered](const auto &representation) { return std::ranges::find(offered, representation.first); });
    return item;
}

std::optional<QByteArray> X11ClipboardReader::data(const QString &type, Instant until) {
    const Atom target = m_display.atom(type);
    auto value = convert(m_display.atom("CLIPBOARD"), target, until);
    if (!value)
        return {};
    if (value->type != target || value->format != 8)
        m_encodings[type] = { value->type, value->format };
    else
        m_encodings.erase(type);
    return std::move(value->bytes);
}

std::optional<X11Property> X11ClipboardReader::convert(
    Atom selection, Atom target, Instant until, const std::optional<X11Property> &parameter) {
    if (std::chrono::steady_clock::now() >= until)
        return {};
    m_conversion = { target, nextProperty(), Stage::Asked, {} };
    if (parameter)
        m_display.setProperty(m_window, m_conversion.property, *parameter);
    else
        XDeleteProperty(m_display.get(), m_window, m_conversion.property);
    XConvertSelection(m_display.get(), selection, target, m_conversion.property, m_window, CurrentTime);
    m_handleEvents(
        [this] { return m_conversion.stage == Stage::Complete || m_conversion.stage == Stage::Refused; },
        until);
    Conversion conversion = std::exchange(m_conversion, {});
    if (conversion.stage != Stage::Complete)
        return {};
    return std::move(conversion.value);
}

Atom X11ClipboardReader::nextProperty() {
    return m_properties[m_conversionCount++ % m_properties.size()];
}

bool X11ClipboardReader::isTransferProperty(Atom property) const {
    return std::ranges::find(m_properties, property) != m_properties.end();
}

void X11ClipboardReader::handle(const XEvent &event) {
    if (event.type == SelectionNotify)
        receiveAnswer(event.xselection);
    else if (event.type == PropertyNotify && event.xproperty.window == m_window
        && event.xproperty.state == PropertyNewValue && isTransferProperty(event.xproperty.atom))
        receivePiece(event.xproperty);
}

void X11ClipboardReader::receiveAnswer(const XSelectionEvent &event) {
    const bool isAwaited = m_conversion.stage == Stage::Asked && event.target == m_conversion.target;
    if (event.property == None) {
        if (isAwaited)
            m_conversion.stage = Stage::Refused;
        return;
    }
    if (!isAwaited || event.property != m_conversion.property)
        return;
    auto value = m_display.property(m_window, event.property, true);
    m_conversion.stage = Stage::Refused;
    if (!value)
        return;
    // Removing the property above was the word to send the first piece.
    m_conversion.stage = value->type == m_display.atom("INCR") ? Stage::InPieces : Stage::Complete;
    if (m_conversion.stage == Stage::Complete)
        m_conversion.value = *std::move(value);
}

void X11ClipboardReader::receivePiece(const XPropertyEvent &event) {
    if (event.atom != m_conversion.property) {
        // An answer that came too late. Owners wait for their pieces to be removed.
        XDeleteProperty(m_display.get(), m_window, event.atom);
        return;
    }
    if (m_conversion.stage != Stage::InPieces)
        return;
    const auto piece = m_display.property(m_window, event.atom, true);
    if (!piece || piece->bytes.isEmpty()) {
        m_conversion.stage = piece ? Stage::Complete : Stage::Refused;
        return;
    }
    m_conversion.value.type = piece->type;
    m_conversion.value.format = piece->format;
    m_conversion.value.bytes += piece->bytes;
}
