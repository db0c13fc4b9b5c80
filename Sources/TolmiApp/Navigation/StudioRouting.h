#pragma once

#include "Foundation/ObservableObject.h"
#include "Platform/Application.h"
#include "TolmiApp/Navigation/StudioDestination.h"

#include <functional>

/// The names by which windows are asked for.
namespace TolmiWindowID {
inline constexpr QLatin1String studio("studio-window");
} // namespace TolmiWindowID

/// The title of the Studio's window, by which the system finds it; the same in every language.
QString studioWindowTitle();

/// The one place that says which workspace the Studio shows. It lives with the program and not with the
/// window; every start begins at the command center. Main thread only.
class StudioRouter final : public ObservableObject {
    Q_OBJECT
    TOLMI_PUBLISHED(StudioDestination, destination, setDestination)

public:
    /// Opens the window with an id, if there is one.
    using OpenWindow = std::function<void(const QString &id)>;

    /// `application` outlives the router.
    explicit StudioRouter(Application &application)
        : m_application(application) { }

    /// Shows a workspace in the Studio and brings the Studio before everything else.
    void open(StudioDestination destination, const OpenWindow &openWindow);

private:
    Application &m_application;
};
