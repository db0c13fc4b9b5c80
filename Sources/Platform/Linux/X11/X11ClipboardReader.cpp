#include "Platform/Linux/X11/X11ClipboardReader.h"

#include <algorithm>

namespace {
/// Each question gets a property of its own in turn, so that a late answer to an earlier one is known.
constexpr int propertyCount = 32;
constexpr size_t mostTypes = 500;
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

std::vector<PasteboardItem> X11ClipboardSnapshot::items() const {
    if (item.representations.empty())
        return {};
    PasteboardItem sorted = item;
    std::ranges::stable_sort(sorted.representations, {},
        [this](const auto &representation) { return std::ranges::find(*offered, representation.first); });
    return { sorted };
}

void X11ClipboardReader::read(X11ClipboardSnapshot &snapshot, Atom selection, Instant until) {
    if (!snapshot.offered)
        readTypes(snapshot, selection, until);
    while (!snapshot.left.empty() && readNext(snapshot, selection, until))
        snapshot.left.pop_front();
}

void X11ClipboardReader::readTypes(X11ClipboardSnapshot &snapshot, Atom selection, Instant until) {
    const auto targets = convert(selection, m_display.atom("TARGETS"), until);
    if (!targets)
        return;
    snapshot.offered = m_display.atomNames(worthNaming(unpackedProperty(*targets)));
    const std::vector<QString> types = clipboardTypesToRead(*snapshot.offered);
    snapshot.left.assign(types.begin(), types.end());
}

/// No program needs so many types; the text must not get lost among them.
std::vector<quint32> X11ClipboardReader::worthNaming(std::vector<quint32> targets) const {
    if (targets.size() <= mostTypes)
        return targets;
    std::vector<quint32> kept(targets.begin(), targets.begin() + mostTypes);
    for (const char *name : { "UTF8_STRING", "text/plain;charset=utf-8", "x-kde-passwordManagerHint" }) {
        const auto atom = quint32(m_display.atom(name));
        if (std::ranges::find(targets, atom) != targets.end() && std::ranges::find(kept, atom) == kept.end())
            kept.push_back(atom);
    }
    return kept;
}

/// Whether the owner has answered, be it that it does not give the type.
bool X11ClipboardReader::readNext(X11ClipboardSnapshot &snapshot, Atom selection, Instant until) {
    const QString type = snapshot.left.front();
    const Atom target = m_display.atom(type);
    Conversion conversion = ask(selection, target, until);
    if (conversion.stage == Stage::Refused)
        return true;
    if (conversion.stage != Stage::Complete)
        return false;
    if (conversion.value.type != target || conversion.value.format != 8)
        m_encodings[type] = { conversion.value.type, conversion.value.format };
    else
        m_encodings.erase(type);
    snapshot.item.representations.emplace_back(type, std::move(conversion.value.bytes));
    return true;
}

std::optional<X11Property> X11ClipboardReader::convert(
    Atom selection, Atom target, Instant until, const Parameter &parameter) {
    Conversion conversion = ask(selection, target, until, parameter);
    if (conversion.stage != Stage::Complete)
        return {};
    return std::move(conversion.value);
}

/// The stage tells how far the answer has come by then.
X11ClipboardReader::Conversion X11ClipboardReader::ask(
    Atom selection, Atom target, Instant until, const Parameter &parameter) {
    m_conversion = { target, nextProperty(), Stage::Asked, {} };
    if (m_display.isBroken() || std::chrono::steady_clock::now() >= until)
        return std::exchange(m_conversion, {});
    if (parameter)
        m_display.setProperty(m_window, m_conversion.property, *parameter);
    else
        XDeleteProperty(m_display.get(), m_window, m_conversion.property);
    XConvertSelection(m_display.get(), selection, target, m_conversion.property, m_window, CurrentTime);
    m_handleEvents(
        [this] { return m_conversion.stage == Stage::Complete || m_conversion.stage == Stage::Refused; },
        until);
    return std::exchange(m_conversion, {});
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
