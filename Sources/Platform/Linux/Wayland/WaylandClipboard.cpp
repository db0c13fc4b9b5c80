#include "Platform/Linux/Wayland/WaylandClipboard.h"

#include "Platform/Linux/Clipboard/PasteProgress.h"

#include <wayland-client.h>
#include <wlr-data-control.h>

#include <algorithm>
#include <array>

namespace {
using std::chrono::steady_clock;

/// What reading the primary selection may add to a paste.
constexpr std::chrono::milliseconds primaryTime { 80 };
constexpr uint32_t versionWithPrimary = 2;

/// The successor of the protocol differs in the names alone, and of these only this one is ever sent.
const wl_interface &extManagerInterface() {
    static const wl_interface interface = [] {
        wl_interface renamed = zwlr_data_control_manager_v1_interface;
        renamed.name = "ext_data_control_manager_v1";
        return renamed;
    }();
    return interface;
}

std::array<const wl_interface *, 2> managerInterfaces() {
    return { &extManagerInterface(), &zwlr_data_control_manager_v1_interface };
}
} // namespace

bool WaylandClipboard::isOfferedBy(const WaylandConnection &connection) {
    return connection.seat() && std::ranges::any_of(managerInterfaces(), [&](const wl_interface *interface) {
        return connection.offers(interface->name);
    });
}

std::unique_ptr<WaylandClipboard> WaylandClipboard::open(std::unique_ptr<WaylandConnection> connection,
    std::shared_ptr<PasteProgress> progress, NeedsPrimary needsPrimary, Interruption interruption) {
    if (!connection || !isOfferedBy(*connection))
        return {};
    zwlr_data_control_manager_v1 *manager = nullptr;
    for (const wl_interface *interface : managerInterfaces()) {
        if (!manager)
            manager = connection->bind<zwlr_data_control_manager_v1>(*interface, versionWithPrimary);
    }
    if (!manager)
        return {};
    return std::unique_ptr<WaylandClipboard>(new WaylandClipboard({ std::move(connection), manager,
        std::move(progress), std::move(needsPrimary), std::move(interruption) }));
}

WaylandClipboard::WaylandClipboard(Setup setup)
    : m_connection(std::move(setup.connection))
    , m_manager(setup.manager)
    , m_device(zwlr_data_control_manager_v1_get_data_device(m_manager, m_connection->seat()))
    , m_progress(std::move(setup.progress))
    , m_needsPrimary(std::move(setup.needsPrimary))
    , m_restore(m_progress)
    , m_interruption(std::move(setup.interruption))
    , m_owner({ *m_connection, m_manager, m_device }, Owner::Selection::Clipboard,
          [this](const QString &type) { noteRead(type); })
    , m_primary({ *m_connection, m_manager, m_device }, Owner::Selection::Primary,
          [this](const QString &type) { noteRead(type); }) {
    watch();
    m_connection->roundTrip(steady_clock::now() + WaylandConnection::answerTime);
}

WaylandClipboard::~WaylandClipboard() {
    zwlr_data_control_device_v1_destroy(m_device);
    zwlr_data_control_manager_v1_destroy(m_manager);
}

void WaylandClipboard::watch() {
    static constexpr zwlr_data_control_device_v1_listener listener {
        .data_offer =
            [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
                static_cast<WaylandClipboard *>(self)->m_newOffers.push_back(
                    std::make_shared<WaylandOffer>(offer));
            },
        .selection =
            [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
                auto &clipboard = *static_cast<WaylandClipboard *>(self);
                clipboard.m_offer = clipboard.takeOffer(offer);
            },
        // The seat has gone.
        .finished
        = [](void *self, zwlr_data_control_device_v1 *) { static_cast<WaylandClipboard *>(self)->retire(); },
        .primary_selection =
            [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
                auto &clipboard = *static_cast<WaylandClipboard *>(self);
                clipboard.m_primaryOffer = clipboard.takeOffer(offer);
            },
    };
    zwlr_data_control_device_v1_add_listener(m_device, &listener, this);
}

WaylandClipboard::Offer WaylandClipboard::takeOffer(zwlr_data_control_offer_v1 *offer) {
    const auto found
        = std::ranges::find_if(m_newOffers, [offer](const auto &made) { return made->get() == offer; });
    if (found == m_newOffers.end())
        return {};
    Offer taken = std::move(*found);
    m_newOffers.erase(found);
    return taken;
}

bool WaylandClipboard::isOver() const {
    return m_isRetired || m_connection->isBroken();
}

void WaylandClipboard::handleEvents() {
    doWhatIsDue();
    step(m_restore.nextDue());
    doWhatIsDue();
}

/// Handles what has arrived, and waits for more until then.
void WaylandClipboard::step(std::optional<Instant> until) {
    std::vector<pollfd> others { { m_interruption.wakeDescriptor, POLLIN, 0 } };
    const auto waitFor = [&others](const std::vector<pollfd> &more) {
        others.insert(others.end(), more.begin(), more.end());
    };
    waitFor(m_owner.descriptors());
    waitFor(m_primary.descriptors());
    if (m_snapshot)
        waitFor(m_snapshot->descriptors());
    m_connection->wait(std::move(others), until);
    m_owner.continueTransfers();
    m_primary.continueTransfers();
    if (m_snapshot)
        m_snapshot->read();
}

/// Learns what is on the clipboard now.
void WaylandClipboard::catchUp(Instant until) {
    m_connection->roundTrip(std::min(until, steady_clock::now() + WaylandConnection::answerTime));
}

WaylandClipboard::Instant WaylandClipboard::limit(Instant until) const {
    return std::min(until, m_interruption.readingEnds());
}

WaylandClipboard::Found WaylandClipboard::items(Instant until, ToolkitMark toolkit) {
    catchUp(until);
    // What is to come back is what the clipboard holds for the user.
    if (const ClipboardContent *pending = m_restore.pending(); pending && !pending->items().empty())
        return { false, pending->items() };
    if (m_owner.owns())
        return { false, m_owner.content().items() };
    if (isToolkits(toolkit))
        return { true, {} };
    continueReading(until);
    const auto snapshot = std::exchange(m_snapshot, {});
    return { false, snapshot ? snapshot->items() : std::vector<PasteboardItem>() };
}

void WaylandClipboard::readAhead(Instant until, ToolkitMark toolkit) {
    catchUp(until);
    if (!m_owner.owns() && !isToolkits(toolkit))
        continueReading(until);
}

bool WaylandClipboard::isToolkits(ToolkitMark toolkit) {
    return toolkit != 0 && !m_owner.owns();
}

void WaylandClipboard::continueReading(Instant until) {
    while (m_offer && !isOver()) {
        if (!m_snapshot || &m_snapshot->offer() != m_offer.get())
            m_snapshot = std::make_unique<Reader>(m_offer);
        m_snapshot->request();
        const Instant end = limit(until);
        if (m_snapshot->isDone() || steady_clock::now() >= end)
            return;
        step(end);
    }
    m_snapshot.reset();
}

std::vector<PasteboardItem> WaylandClipboard::read(Offer offer, Instant until) {
    Reader reader(std::move(offer));
    for (reader.request(); !reader.isDone() && !isOver() && steady_clock::now() < until; reader.request()) {
        m_connection->wait(reader.descriptors(), until);
        reader.read();
    }
    return reader.items();
}

bool WaylandClipboard::take(ClipboardContent content) {
    endPaste();
    return m_owner.take(std::move(content), steady_clock::now() + WaylandConnection::answerTime);
}

bool WaylandClipboard::takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced) {
    m_restore.begin(displaced);
    m_progress->begin(m_needsPrimary() && takePrimary(text));
    return m_owner.take(
        ClipboardContent::dictated(text), steady_clock::now() + WaylandConnection::answerTime);
}

bool WaylandClipboard::takePrimary(const QString &text) {
    if (!m_displacedPrimary && m_primary.owns())
        m_displacedPrimary = m_primary.content();
    else if (!m_displacedPrimary && m_primaryOffer)
        m_displacedPrimary = ClipboardContent(read(m_primaryOffer, steady_clock::now() + primaryTime));
    return m_primary.take(
        ClipboardContent::dictated(text), steady_clock::now() + WaylandConnection::answerTime);
}

bool WaylandClipboard::holdsDictatedText() {
    catchUp(steady_clock::now() + WaylandConnection::answerTime);
    return m_restore.isPasting() && m_owner.owns() && !isOver()
        && (!m_progress->offersPrimary() || m_primary.owns());
}

/// The compositor does not tell who reads. Clipboard managers look for the hint, and read before the command.
void WaylandClipboard::noteRead(const QString &type) {
    if (m_progress->postedAt() && !ClipboardContent::isHint(type))
        m_restore.noteRead();
}

void WaylandClipboard::restore(const std::vector<PasteboardItem> &items) {
    catchUp(steady_clock::now() + WaylandConnection::answerTime);
    m_restore.restore(items, m_owner.owns());
    doWhatIsDue();
}

void WaylandClipboard::doWhatIsDue() {
    if (const auto content = m_restore.takeDue(m_owner.owns()))
        endPasteWith(*content);
    else if (!m_restore.isPasting())
        bringPrimaryBack();
    // The thread is not reading here, so what is out of date need not be kept.
    if (m_snapshot && &m_snapshot->offer() != m_offer.get())
        m_snapshot.reset();
}

void WaylandClipboard::endPaste() {
    m_restore.end();
    bringPrimaryBack();
}

void WaylandClipboard::endPasteWith(ClipboardContent content) {
    endPaste();
    if (!content.types().empty())
        m_owner.take(std::move(content), steady_clock::now() + WaylandConnection::answerTime);
}

void WaylandClipboard::bringPrimaryBack() {
    // Something that was selected meanwhile stays selected.
    if (m_displacedPrimary && !m_displacedPrimary->types().empty() && m_primary.owns())
        m_primary.take(*m_displacedPrimary, steady_clock::now() + WaylandConnection::answerTime);
    m_displacedPrimary.reset();
}

void WaylandClipboard::handOver(Instant until) {
    catchUp(until);
    if (m_restore.pending())
        endPasteWith(*m_restore.pending());
    else if (m_restore.isPasting() && m_owner.owns())
        endPasteWith(m_restore.displaced());
}
