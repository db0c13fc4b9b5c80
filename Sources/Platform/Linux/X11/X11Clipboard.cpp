#include "Platform/Linux/X11/X11Clipboard.h"

#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/X11/X11ActiveWindow.h"
#include "Platform/Linux/X11/X11Client.h"

#include <X11/Xatom.h>
#include <X11/extensions/Xfixes.h>

#include <algorithm>

namespace {
using std::chrono::steady_clock;

/// What reading the primary selection may add to a paste.
constexpr std::chrono::milliseconds primaryTime { 80 };
} // namespace

X11Clipboard::X11Clipboard(
    std::unique_ptr<X11Display> display, std::shared_ptr<PasteProgress> progress, Interruption interruption)
    : m_display(std::move(display))
    , m_progress(std::move(progress))
    , m_restore(m_progress)
    , m_interruption(std::move(interruption))
    , m_selection(m_display->atom("CLIPBOARD"))
    , m_window(makeWindow(*m_display))
    , m_owner(*m_display, m_selection, m_window, m_encodings, [this](Window reader) { noteRead(reader); })
    , m_primary(*m_display, XA_PRIMARY, m_window, m_encodings, [this](Window reader) { noteRead(reader); })
    , m_reader(*m_display, m_window, m_encodings,
          [this](const std::function<bool()> &isDone, Instant until) { handleEventsUntil(isDone, until); })
    , m_keyboard(*m_display) {
    watchChanges();
}

Window X11Clipboard::makeWindow(X11Display &display) {
    const Window window = XCreateSimpleWindow(display.get(), display.root(), -1, -1, 1, 1, 0, 0, 0);
    XSelectInput(display.get(), window, PropertyChangeMask);
    return window;
}

void X11Clipboard::watchChanges() {
    int firstEvent = 0;
    int ignored = 0;
    if (!XFixesQueryExtension(m_display->get(), &firstEvent, &ignored))
        return;
    m_changeEvent = firstEvent + XFixesSelectionNotify;
    XFixesSelectSelectionInput(m_display->get(), m_display->root(), m_selection,
        XFixesSetSelectionOwnerNotifyMask | XFixesSelectionWindowDestroyNotifyMask
            | XFixesSelectionClientCloseNotifyMask);
}

void X11Clipboard::handleEvents() {
    handleArrivedEvents();
    doWhatIsDue();
    m_display->wait(m_interruption.wakeDescriptor, m_restore.nextDue());
}

void X11Clipboard::handleArrivedEvents() {
    while (const auto event = m_display->takeEvent()) {
        if (event->type == m_changeEvent)
            ++m_changes;
        if (m_keyboard.handle(*event))
            continue;
        m_owner.handle(*event);
        m_primary.handle(*event);
        m_reader.handle(*event);
    }
}

void X11Clipboard::handleEventsUntil(const std::function<bool()> &isDone, Instant until) {
    for (;;) {
        handleArrivedEvents();
        const Instant end = limit(until);
        if (isDone() || m_display->isBroken() || steady_clock::now() >= end)
            return;
        m_display->wait(m_interruption.wakeDescriptor, end);
    }
}

X11Clipboard::Instant X11Clipboard::limit(Instant until) const {
    return std::min(until, m_interruption.readingEnds());
}

X11Clipboard::Found X11Clipboard::items(Instant until, ToolkitMark toolkit) {
    handleArrivedEvents();
    // What is to come back is what the clipboard holds for the user.
    if (const ClipboardContent *pending = m_restore.pending(); pending && !pending->items().empty())
        return { false, pending->items() };
    if (m_owner.owns())
        return { false, m_owner.content().items() };
    if (isToolkits(toolkit))
        return { true, {} };
    continueReading(until);
    const auto snapshot = std::exchange(m_snapshot, {});
    return { false, snapshot->content.items() };
}

void X11Clipboard::readAhead(Instant until, ToolkitMark toolkit) {
    handleArrivedEvents();
    // Without news of its changes nothing that was read before counts.
    if (m_changeEvent && !m_owner.owns() && !isToolkits(toolkit))
        continueReading(until);
}

bool X11Clipboard::isToolkits(ToolkitMark toolkit) {
    const Window owner = m_display->selectionOwner(m_selection);
    return toolkit != None && owner != None && X11Client::areOfOne(*m_display, owner, toolkit);
}

void X11Clipboard::continueReading(Instant until) {
    do {
        // The news of a change come before the answer that names the new owner.
        const Window owner = m_display->selectionOwner(m_selection);
        handleArrivedEvents();
        if (!m_snapshot || m_snapshot->owner != owner || m_snapshot->change != m_changes)
            m_snapshot = Snapshot { owner, m_changes, {} };
        if (owner != None)
            m_reader.read(m_snapshot->content, m_selection, until);
        m_display->selectionOwner(m_selection);
        handleArrivedEvents();
    } while (m_snapshot->change != m_changes && steady_clock::now() < limit(until));
}

bool X11Clipboard::take(ClipboardContent content) {
    endPaste();
    return m_owner.take(std::move(content));
}

bool X11Clipboard::takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced) {
    handleArrivedEvents();
    m_restore.begin(displaced);
    m_progress->begin(needsPrimary() && takePrimary(text));
    return m_owner.take(ClipboardContent::dictated(text));
}

bool X11Clipboard::needsPrimary() const {
    const auto front = X11ActiveWindow::current(*m_display);
    return (front && front->pastesAtShiftInsert()) || !m_keyboard.hasLatinLetters();
}

bool X11Clipboard::takePrimary(const QString &text) {
    if (!m_displacedPrimary)
        m_displacedPrimary = primaryContent(steady_clock::now() + primaryTime);
    return m_primary.take(ClipboardContent::dictated(text));
}

ClipboardContent X11Clipboard::primaryContent(Instant until) {
    if (m_primary.owns())
        return m_primary.content();
    X11ClipboardSnapshot snapshot;
    if (m_display->selectionOwner(XA_PRIMARY) != None)
        m_reader.read(snapshot, XA_PRIMARY, until);
    return ClipboardContent(snapshot.items());
}

bool X11Clipboard::holdsDictatedText() {
    return m_restore.isPasting() && m_owner.owns() && m_owner.ownsNow()
        && (!m_progress->offersPrimary() || m_primary.ownsNow());
}

void X11Clipboard::noteRead(Window reader) {
    const auto target = m_progress->target();
    if (target && X11Client::areOfOne(*m_display, reader, *target))
        m_restore.noteRead();
}

void X11Clipboard::restore(const std::vector<PasteboardItem> &items) {
    handleArrivedEvents();
    m_restore.restore(items, m_owner.owns());
    doWhatIsDue();
}

void X11Clipboard::doWhatIsDue() {
    const auto content = m_restore.takeDue(m_owner.owns());
    if (content)
        endPasteWith(*content);
    else if (!m_restore.isPasting())
        bringPrimaryBack();
    // The thread is not reading here, so what is out of date need not be kept.
    if (m_snapshot && m_snapshot->change != m_changes)
        m_snapshot.reset();
}

void X11Clipboard::endPasteWith(ClipboardContent content) {
    endPaste();
    if (!content.types().empty())
        m_owner.take(std::move(content));
}

void X11Clipboard::endPaste() {
    m_restore.end();
    bringPrimaryBack();
}

void X11Clipboard::bringPrimaryBack() {
    // Something that was selected meanwhile stays selected.
    if (m_displacedPrimary && !m_displacedPrimary->types().empty() && m_primary.owns())
        m_primary.take(*m_displacedPrimary);
    m_displacedPrimary.reset();
}

void X11Clipboard::handOver(Instant until) {
    handleArrivedEvents();
    if (m_restore.pending())
        endPasteWith(*m_restore.pending());
    else if (m_restore.isPasting() && m_owner.owns())
        endPasteWith(m_restore.displaced());
    const Atom manager = m_display->atom("CLIPBOARD_MANAGER");
    if (!m_owner.owns() || m_owner.content().isSecret() || m_display->selectionOwner(manager) == None)
        return;
    m_reader.convert(manager, m_display->atom("SAVE_TARGETS"), until,
        X11Property { XA_ATOM, 32, packedProperty(m_owner.targets()) });
}
