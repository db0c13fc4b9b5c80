#include "Platform/Linux/Wayland/WaylandConnection.h"

#include "Foundation/Log.h"

#include <wayland-client.h>

#include <algorithm>
#include <cerrno>

namespace {
using std::chrono::steady_clock;

/// Compositors answer within a few milliseconds.
constexpr std::chrono::milliseconds openingTime { 500 };

/// For poll(), which waits for ever at -1.
int remaining(std::optional<WaylandConnection::Instant> until) {
    if (!until)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - steady_clock::now());
    return int(std::clamp<qint64>(left.count(), 0, 60000));
}
} // namespace

std::unique_ptr<WaylandConnection> WaylandConnection::open(const QByteArray &name) {
    // Without a name the library takes a usual one, which in an X11 session may belong to another session.
    const QByteArray socket = name.isEmpty() ? qgetenv("WAYLAND_DISPLAY") : name;
    wl_display *display = socket.isEmpty() ? nullptr : wl_display_connect(socket.constData());
    if (!display)
        return {};
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    if (!connection->roundTrip(steady_clock::now() + openingTime))
        return {};
    connection->m_seat = connection->bind<wl_seat>(wl_seat_interface, 1);
    return connection;
}

WaylandConnection::WaylandConnection(wl_display *display)
    : m_display(display)
    , m_registry(wl_display_get_registry(display)) {
    static constexpr wl_registry_listener listener {
        .global =
            [](void *self, wl_registry *, uint32_t name, const char *interface, uint32_t version) {
                // Of several seats or outputs the first one counts.
                static_cast<WaylandConnection *>(self)->m_globals.try_emplace(
                    interface, Global { name, version });
            },
        .global_remove =
            [](void *self, wl_registry *, uint32_t name) {
                std::erase_if(static_cast<WaylandConnection *>(self)->m_globals,
                    [name](const auto &entry) { return entry.second.name == name; });
            },
    };
    wl_registry_add_listener(m_registry, &listener, this);
}

WaylandConnection::~WaylandConnection() {
    if (m_seat)
        wl_seat_destroy(m_seat);
    wl_registry_destroy(m_registry);
    wl_display_flush(m_display);
    wl_display_disconnect(m_display);
}

bool WaylandConnection::offers(const char *interface) const {
    return m_globals.contains(interface);
}

void *WaylandConnection::bindObject(const wl_interface &interface, uint32_t highestVersion) {
    const auto global = m_globals.find(interface.name);
    if (m_isBroken || global == m_globals.end())
        return nullptr;
    return wl_registry_bind(
        m_registry, global->second.name, &interface, std::min(global->second.version, highestVersion));
}

void WaylandConnection::wait(std::vector<pollfd> others, std::optional<Instant> until) {
    // What was read by an earlier call may be what the caller waits for.
    if (m_isBroken || wl_display_prepare_read(m_display) != 0) {
        dispatch();
        return;
    }
    const bool isFull = wl_display_flush(m_display) < 0 && errno == EAGAIN;
    others.push_back({ wl_display_get_fd(m_display), short(isFull ? POLLIN | POLLOUT : POLLIN), 0 });
    const bool isReady = poll(others.data(), others.size(), remaining(until)) > 0;
    if (isReady && others.back().revents & (POLLIN | POLLHUP | POLLERR))
        note(wl_display_read_events(m_display) == 0);
    else
        wl_display_cancel_read(m_display);
    dispatch();
}

bool WaylandConnection::dispatch() {
    if (!m_isBroken)
        note(wl_display_dispatch_pending(m_display) >= 0);
    return !m_isBroken;
}

bool WaylandConnection::roundTrip(Instant until) {
    bool isDone = false;
    static constexpr wl_callback_listener listener {
        .done = [](void *isDone, wl_callback *, uint32_t) { *static_cast<bool *>(isDone) = true; },
    };
    if (m_isBroken)
        return false;
    const WaylandObject<wl_callback, &wl_callback_destroy> callback(wl_display_sync(m_display));
    wl_callback_add_listener(callback.get(), &listener, &isDone);
    while (!isDone && !m_isBroken && steady_clock::now() < until)
        wait({}, until);
    return isDone && !m_isBroken;
}

void WaylandConnection::note(bool isWorking) {
    if (isWorking || std::exchange(m_isBroken, true))
        return;
    logLine(QStringLiteral("Tolmi: the connection to the Wayland compositor broke (error %1)")
                .arg(wl_display_get_error(m_display)));
}
