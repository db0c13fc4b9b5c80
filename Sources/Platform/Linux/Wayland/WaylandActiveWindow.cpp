#include "Platform/Linux/Wayland/WaylandActiveWindow.h"

#include "Platform/Linux/Wayland/WaylandConnection.h"

#include <wayland-client.h>
#include <wlr-foreign-toplevel.h>

#include <algorithm>
#include <span>

namespace {
using Manager = WaylandObject<zwlr_foreign_toplevel_manager_v1, &zwlr_foreign_toplevel_manager_v1_destroy>;
using Handle = WaylandObject<zwlr_foreign_toplevel_handle_v1, &zwlr_foreign_toplevel_handle_v1_destroy>;

/// In the list of a window's states.
constexpr uint32_t activatedState = 2;

struct Toplevel {
    Handle handle;
    QString applicationID;
    bool isActivated = false;
};
using Toplevels = std::vector<std::unique_ptr<Toplevel>>;

void addToplevel(
    void *toplevels, zwlr_foreign_toplevel_manager_v1 *, zwlr_foreign_toplevel_handle_v1 *handle) {
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener {
        .title = [](void *, zwlr_foreign_toplevel_handle_v1 *, const char *) {},
        .app_id
        = [](void *toplevel, zwlr_foreign_toplevel_handle_v1 *,
              const char *id) { static_cast<Toplevel *>(toplevel)->applicationID = QString::fromUtf8(id); },
        .output_enter = [](void *, zwlr_foreign_toplevel_handle_v1 *, wl_output *) {},
        .output_leave = [](void *, zwlr_foreign_toplevel_handle_v1 *, wl_output *) {},
        .state =
            [](void *toplevel, zwlr_foreign_toplevel_handle_v1 *, wl_array *states) {
                const std::span all(
                    static_cast<const uint32_t *>(states->data), states->size / sizeof(uint32_t));
                static_cast<Toplevel *>(toplevel)->isActivated
                    = std::ranges::find(all, activatedState) != all.end();
            },
        .done = [](void *, zwlr_foreign_toplevel_handle_v1 *) {},
        .closed = [](void *, zwlr_foreign_toplevel_handle_v1 *) {},
    };
    auto toplevel = std::make_unique<Toplevel>(Toplevel { Handle(handle), {}, false });
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, toplevel.get());
    static_cast<Toplevels *>(toplevels)->push_back(std::move(toplevel));
}

/// All windows and what they say of themselves.
Toplevels toplevels(WaylandConnection &connection) {
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener {
        .toplevel = &addToplevel,
        .finished = [](void *, zwlr_foreign_toplevel_manager_v1 *) {},
    };
    Toplevels found;
    const Manager manager(
        connection.bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface, 1));
    if (!manager)
        return found;
    zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &listener, &found);
    connection.roundTrip(std::chrono::steady_clock::now() + WaylandConnection::answerTime);
    return found;
}
} // namespace

bool WaylandActiveWindow::isOfferedBy(const WaylandConnection &connection) {
    return connection.offers(zwlr_foreign_toplevel_manager_v1_interface.name);
}

std::optional<ActiveWindow> WaylandActiveWindow::current(const QByteArray &socketName) {
    const auto connection = WaylandConnection::open(socketName);
    if (!connection)
        return {};
    const Toplevels windows = toplevels(*connection);
    const auto active = std::ranges::find_if(windows, &Toplevel::isActivated);
    if (active == windows.end() || (*active)->applicationID.isEmpty())
        return {};
    const QString &id = (*active)->applicationID;
    return ActiveWindow {
        .instance = id, .className = id, .applicationID = id, .processID = {}, .window = 1
    };
}
