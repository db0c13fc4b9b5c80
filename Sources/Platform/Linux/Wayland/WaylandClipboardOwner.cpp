#include "Platform/Linux/Wayland/WaylandClipboardOwner.h"

#include <wayland-client.h>
#include <wlr-data-control.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {
using std::chrono::steady_clock;

/// A program that does not take the next piece for so long has given up.
constexpr std::chrono::seconds longestPause { 20 };
} // namespace

WaylandClipboardOwner::WaylandClipboardOwner(Device device, Selection selection, OnRead onRead)
    : m_device(device)
    , m_selection(selection)
    , m_onRead(std::move(onRead)) { }

WaylandClipboardOwner::~WaylandClipboardOwner() {
    release();
}

bool WaylandClipboardOwner::take(ClipboardContent content, WaylandConnection::Instant until) {
    static constexpr zwlr_data_control_source_v1_listener listener {
        .send = [](void *self, zwlr_data_control_source_v1 *, const char *type,
                    int pipe) { static_cast<WaylandClipboardOwner *>(self)->send(type, pipe); },
        .cancelled =
            [](void *self, zwlr_data_control_source_v1 *source) {
                auto &owner = *static_cast<WaylandClipboardOwner *>(self);
                if (source == owner.m_source)
                    owner.release();
            },
    };
    if (m_device.connection.isBroken())
        return false;
    zwlr_data_control_source_v1 *source = zwlr_data_control_manager_v1_create_data_source(m_device.manager);
    zwlr_data_control_source_v1_add_listener(source, &listener, this);
    for (const QString &type : content.types())
        zwlr_data_control_source_v1_offer(source, type.toUtf8().constData());
    select(source);
    release();
    m_source = source;
    m_content = std::move(content);
    return m_device.connection.roundTrip(until) && owns();
}

void WaylandClipboardOwner::select(zwlr_data_control_source_v1 *source) {
    if (m_selection == Selection::Clipboard)
        zwlr_data_control_device_v1_set_selection(m_device.device, source);
    else
        zwlr_data_control_device_v1_set_primary_selection(m_device.device, source);
}

void WaylandClipboardOwner::release() {
    if (m_source)
        zwlr_data_control_source_v1_destroy(std::exchange(m_source, nullptr));
    m_content = {};
}

void WaylandClipboardOwner::send(const char *type, int pipe) {
    Transfer transfer { FileDescriptor(pipe), {}, 0, steady_clock::now() };
    const QString name = QString::fromUtf8(type);
    const auto data = m_content.data(name);
    if (!data)
        return;
    transfer.bytes = *data;
    // The reader may not take it all at once, or never.
    fcntl(pipe, F_SETFL, fcntl(pipe, F_GETFL) | O_NONBLOCK);
    m_onRead(name);
    if (goesOn(transfer))
        m_transfers.push_back(std::move(transfer));
}

std::vector<pollfd> WaylandClipboardOwner::descriptors() const {
    std::vector<pollfd> descriptors;
    for (const Transfer &transfer : m_transfers)
        descriptors.push_back({ transfer.pipe.get(), POLLOUT, 0 });
    return descriptors;
}

void WaylandClipboardOwner::continueTransfers() {
    std::erase_if(m_transfers, [](Transfer &transfer) { return !goesOn(transfer); });
}

/// Sends what the pipe takes; false when there is nothing left to do.
bool WaylandClipboardOwner::goesOn(Transfer &transfer) {
    while (transfer.sent < transfer.bytes.size()) {
        const ssize_t count = write(transfer.pipe.get(), transfer.bytes.constData() + transfer.sent,
            size_t(transfer.bytes.size() - transfer.sent));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno == EAGAIN && steady_clock::now() < transfer.lastStep + longestPause;
        transfer.sent += count;
        transfer.lastStep = steady_clock::now();
    }
    return false;
}
