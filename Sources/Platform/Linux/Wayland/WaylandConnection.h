#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <poll.h>

struct wl_display;
struct wl_interface;
struct wl_registry;
struct wl_seat;

/// A connection of the program's own to the Wayland compositor, beside that of the toolkit. A connection that
/// breaks is logged once and never ends the program. One thread at a time uses it.
class WaylandConnection {
public:
    using Instant = std::chrono::steady_clock::time_point;
    /// How long the compositor gets for what it does at once; it takes a few milliseconds.
    static constexpr std::chrono::milliseconds answerTime { 100 };

    /// Connects to the socket named `name`, or to that of the environment when the name is empty, and learns
    /// what the compositor offers; null when there is none, or when it does not answer in time.
    static std::unique_ptr<WaylandConnection> open(const QByteArray &name = {});
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection &) = delete;
    WaylandConnection &operator=(const WaylandConnection &) = delete;

    wl_display *get() const { return m_display; }
    /// Whether the connection has gone. Every request is in vain then.
    bool isBroken() const { return m_isBroken; }

    /// Whether the compositor offers the interface of that name.
    bool offers(const char *interface) const;
    /// The compositor's object of an interface, in the highest version that both know, to be destroyed by the
    /// caller; null when it offers none. The type is that of the interface.
    template <typename Object>
    Object *bind(const wl_interface &interface, uint32_t highestVersion) {
        return static_cast<Object *>(bindObject(interface, highestVersion));
    }
    /// The first seat; null when there is none.
    wl_seat *seat() const { return m_seat; }

    /// Sends what was requested, handles what has arrived, and waits until more has or one of `others` is
    /// ready or the instant has come; without one, as long as it takes.
    void wait(std::vector<pollfd> others, std::optional<Instant> until);
    /// Waits until the compositor has handled all that was requested; false when it had not by then.
    bool roundTrip(Instant until);

private:
    struct Global {
        uint32_t name;
        uint32_t version;
    };

    explicit WaylandConnection(wl_display *display);
    void *bindObject(const wl_interface &interface, uint32_t highestVersion);
    bool dispatch();
    void note(bool isWorking);

    wl_display *m_display;
    wl_registry *m_registry;
    wl_seat *m_seat = nullptr;
    std::map<std::string, Global> m_globals;
    bool m_isBroken = false;
};

/// Destroys a Wayland object with the function that its protocol has for that.
template <auto destroy>
struct WaylandDestroyer {
    template <typename Object>
    void operator()(Object *object) const {
        destroy(object);
    }
};
template <typename Object, auto destroy>
using WaylandObject = std::unique_ptr<Object, WaylandDestroyer<destroy>>;
