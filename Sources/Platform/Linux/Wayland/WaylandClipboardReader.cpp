#include "Platform/Linux/Wayland/WaylandClipboardReader.h"

#include "Platform/Linux/Clipboard/ClipboardContent.h"

#include <wayland-client.h>
#include <wlr-data-control.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {
/// No program needs so many types, and each one that is being read needs a descriptor.
constexpr size_t mostTypes = 500;
constexpr size_t mostAtATime = 16;
/// A content that is larger does not come back in full: nobody copies so much, and it is all held in memory.
constexpr qsizetype mostBytes = qsizetype(512) * 1024 * 1024;
} // namespace

WaylandOffer::WaylandOffer(zwlr_data_control_offer_v1 *offer)
    : m_offer(offer) {
    static constexpr zwlr_data_control_offer_v1_listener listener {
        .offer =
            [](void *self, zwlr_data_control_offer_v1 *, const char *type) {
                auto &types = static_cast<WaylandOffer *>(self)->m_types;
                if (types.size() < mostTypes)
                    types.push_back(QString::fromUtf8(type));
            },
    };
    zwlr_data_control_offer_v1_add_listener(m_offer, &listener, this);
}

WaylandOffer::~WaylandOffer() {
    zwlr_data_control_offer_v1_destroy(m_offer);
}

WaylandClipboardReader::WaylandClipboardReader(std::shared_ptr<const WaylandOffer> offer)
    : m_offer(std::move(offer)) {
    const std::vector<QString> types = clipboardTypesToRead(m_offer->types());
    m_left.assign(types.begin(), types.end());
}

std::vector<PasteboardItem> WaylandClipboardReader::items() const {
    if (m_item.representations.empty())
        return {};
    PasteboardItem sorted = m_item;
    std::ranges::stable_sort(sorted.representations, {}, [this](const auto &representation) {
        return std::ranges::find(m_offer->types(), representation.first);
    });
    return { sorted };
}

void WaylandClipboardReader::request() {
    while (!m_left.empty() && m_transfers.size() < mostAtATime) {
        const QString type = m_left.front();
        m_left.pop_front();
        std::array<int, 2> ends {};
        if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            continue;
        const FileDescriptor writeEnd(ends[1]);
        // Owners write as if to a file.
        fcntl(writeEnd.get(), F_SETFL, 0);
        zwlr_data_control_offer_v1_receive(m_offer->get(), type.toUtf8().constData(), writeEnd.get());
        m_transfers.push_back({ type, FileDescriptor(ends[0]), {} });
    }
}

std::vector<pollfd> WaylandClipboardReader::descriptors() const {
    std::vector<pollfd> descriptors;
    for (const Transfer &transfer : m_transfers)
        descriptors.push_back({ transfer.pipe.get(), POLLIN, 0 });
    return descriptors;
}

void WaylandClipboardReader::read() {
    std::erase_if(m_transfers, [this](Transfer &transfer) { return !goesOn(transfer); });
}

/// Reads what the pipe has; false when the type is over.
bool WaylandClipboardReader::goesOn(Transfer &transfer) {
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = ::read(transfer.pipe.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno == EAGAIN;
        m_size += count;
        if (m_size > mostBytes)
            return false;
        if (count == 0)
            break;
        transfer.bytes.append(buffer.data(), count);
    }
    m_item.representations.emplace_back(transfer.type, std::move(transfer.bytes));
    return false;
}
