#include "Platform/Linux/X11/X11ClipboardOwner.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <utility>

namespace {
constexpr int mostAttempts = 5;
/// A program that does not fetch the next piece for so long has given up.
constexpr std::chrono::seconds longestPause { 20 };
} // namespace

X11ClipboardOwner::X11ClipboardOwner(
    X11Display &display, Atom selection, Window window, const X11ClipboardEncodings &encodings, OnRead onRead)
    : m_display(display)
    , m_selection(selection)
    , m_window(window)
    , m_encodings(encodings)
    , m_onRead(std::move(onRead)) { }

bool X11ClipboardOwner::take(ClipboardContent content) {
    m_content = std::move(content);
    m_owns = false;
    // Another program may take it in the same moment; the text is to be there when the paste command arrives.
    for (int attempt = 0; attempt < mostAttempts && !m_owns; ++attempt) {
        m_takenAt = serverTime();
        if (m_display.isBroken())
            break;
        m_takenBy = NextRequest(m_display.get());
        XSetSelectionOwner(m_display.get(), m_selection, m_window, m_takenAt);
        m_owns = ownsNow();
    }
    return m_owns;
}

bool X11ClipboardOwner::ownsNow() const {
    return m_display.selectionOwner(m_selection) == m_window;
}

Time X11ClipboardOwner::serverTime() const {
    const Atom property = m_display.atom("_TOLMI_TIME");
    if (m_display.isBroken())
        return CurrentTime;
    XChangeProperty(m_display.get(), m_window, property, XA_INTEGER, 8, PropModeAppend, nullptr, 0);
    XSync(m_display.get(), False);
    if (m_display.isBroken())
        return CurrentTime;
    XEvent event;
    const auto isAnswer = [](Display *, XEvent *candidate, XPointer property) -> int {
        return candidate->type == PropertyNotify
            && candidate->xproperty.atom == *reinterpret_cast<Atom *>(property);
    };
    auto argument = property;
    if (!XCheckIfEvent(m_display.get(), &event, isAnswer, reinterpret_cast<XPointer>(&argument)))
        return CurrentTime;
    return event.xproperty.time;
}

void X11ClipboardOwner::handle(const XEvent &event) {
    switch (event.type) {
    case SelectionClear:
        if (event.xselectionclear.selection == m_selection)
            clear(event.xselectionclear);
        break;
    case SelectionRequest:
        if (event.xselectionrequest.selection == m_selection)
            answer(event.xselectionrequest);
        break;
    case PropertyNotify:
        if (event.xproperty.window != m_window && event.xproperty.state == PropertyDelete)
            continueTransfer(event.xproperty);
        break;
    case DestroyNotify:
        endTransfers(event.xdestroywindow.window);
        break;
    default:
        break;
    }
}

void X11ClipboardOwner::clear(const XSelectionClearEvent &event) {
    // News from before the latest take are old.
    if (event.serial < m_takenBy)
        return;
    m_owns = false;
    m_content = {};
}

void X11ClipboardOwner::answer(const XSelectionRequestEvent &request) {
    endStaleTransfers();
    // Old programs leave the choice of the property to the owner.
    const Atom property = request.property == None ? request.target : request.property;
    bool isGiven = false;
    if (m_owns) {
        isGiven = request.target == m_display.atom("MULTIPLE")
            ? request.property != None && convertSeveral(request.requestor, property)
            : convert(request.requestor, request.target, property);
    }
    if (m_display.isBroken())
        return;
    XEvent event {};
    event.xselection.type = SelectionNotify;
    event.xselection.requestor = request.requestor;
    event.xselection.selection = request.selection;
    event.xselection.target = request.target;
    event.xselection.property = isGiven ? property : None;
    event.xselection.time = request.time;
    XSendEvent(m_display.get(), request.requestor, False, NoEventMask, &event);
    XFlush(m_display.get());
}

bool X11ClipboardOwner::convertSeveral(Window requestor, Atom property) {
    auto pairs = m_display.property(requestor, property);
    if (!pairs)
        return false;
    std::vector<quint32> atoms = unpackedProperty(*pairs);
    for (size_t index = 0; index + 1 < atoms.size(); index += 2) {
        if (!convert(requestor, atoms[index], atoms[index + 1]))
            atoms[index + 1] = None;
    }
    pairs->bytes = packedProperty(atoms);
    m_display.setProperty(requestor, property, *pairs);
    return true;
}

bool X11ClipboardOwner::convert(Window requestor, Atom target, Atom property) {
    auto converted = property == None ? std::nullopt : value(target);
    if (!converted)
        return false;
    give(requestor, property, *std::move(converted));
    if (m_onRead && isContent(target))
        m_onRead(requestor);
    return true;
}

bool X11ClipboardOwner::isContent(Atom target) const {
    return m_content.data(m_display.atomName(target)).has_value();
}

std::vector<quint32> X11ClipboardOwner::targets() const {
    std::vector<quint32> atoms;
    for (const char *name : { "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS" })
        atoms.push_back(quint32(m_display.atom(name)));
    for (const QString &type : m_content.types())
        atoms.push_back(quint32(m_display.atom(type)));
    return atoms;
}

std::optional<X11Property> X11ClipboardOwner::value(Atom target) const {
    if (target == m_display.atom("TARGETS"))
        return X11Property { XA_ATOM, 32, packedProperty(targets()) };
    if (target == m_display.atom("TIMESTAMP"))
        return X11Property { XA_INTEGER, 32, packedProperty({ quint32(m_takenAt) }) };
    if (target == m_display.atom("SAVE_TARGETS"))
        return X11Property { m_display.atom("NULL"), 32, {} };
    const QString type = m_display.atomName(target);
    const auto data = m_content.data(type);
    if (!data)
        return {};
    const auto encoding = m_encodings.find(type);
    if (encoding != m_encodings.end())
        return X11Property { encoding->second.type, encoding->second.format, *data };
    const bool isAnyText = target == m_display.atom("TEXT");
    return X11Property { isAnyText ? m_display.atom("UTF8_STRING") : target, 8, *data };
}

void X11ClipboardOwner::give(Window requestor, Atom property, X11Property value) {
    if (value.bytes.size() > largestPiece())
        startTransfer(requestor, property, std::move(value));
    else
        m_display.setProperty(requestor, property, value);
}

qsizetype X11ClipboardOwner::largestPiece() const {
    constexpr qsizetype requestHeader = 64;
    return qsizetype(XMaxRequestSize(m_display.get())) * 4 - requestHeader;
}

void X11ClipboardOwner::startTransfer(Window requestor, Atom property, X11Property value) {
    XSelectInput(m_display.get(), requestor, PropertyChangeMask | StructureNotifyMask);
    m_display.setProperty(
        requestor, property, { m_display.atom("INCR"), 32, packedProperty({ quint32(value.bytes.size()) }) });
    m_transfers.push_back({ requestor, property, std::move(value), 0, std::chrono::steady_clock::now() });
}

void X11ClipboardOwner::continueTransfer(const XPropertyEvent &event) {
    const auto transfer = std::ranges::find_if(m_transfers, [&event](const Transfer &candidate) {
        return candidate.requestor == event.window && candidate.property == event.atom;
    });
    if (transfer == m_transfers.end())
        return;
    // An empty piece tells that there is no more.
    X11Property piece = transfer->value;
    piece.bytes = transfer->value.bytes.mid(transfer->sent, largestPiece());
    m_display.setProperty(transfer->requestor, transfer->property, piece);
    XFlush(m_display.get());
    transfer->sent += piece.bytes.size();
    transfer->lastStep = std::chrono::steady_clock::now();
    if (!piece.bytes.isEmpty())
        return;
    m_transfers.erase(transfer);
    if (std::ranges::find(m_transfers, event.window, &Transfer::requestor) == m_transfers.end())
        XSelectInput(m_display.get(), event.window, NoEventMask);
}

void X11ClipboardOwner::endTransfers(Window requestor) {
    std::erase_if(
        m_transfers, [requestor](const Transfer &transfer) { return transfer.requestor == requestor; });
}

void X11ClipboardOwner::endStaleTransfers() {
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(
        m_transfers, [now](const Transfer &transfer) { return now - transfer.lastStep > longestPause; });
}
