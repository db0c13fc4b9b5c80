#pragma once

#include "Platform/FrontmostApplication.h"
#include "Platform/Linux/Desktop/DesktopEntries.h"

#include <QByteArray>

/// The application of the window that the Wayland compositor calls activated. Its bundle identifier is the id
/// of its desktop file, or that which the window gives itself where there is no such file. Main thread only.
class WaylandFrontmostApplication final : public FrontmostApplication {
public:
    /// An empty name stands for the socket of the environment.
    explicit WaylandFrontmostApplication(DesktopEntries entries, QByteArray socketName = {});

    std::optional<FrontApplication> current() override;

private:
    DesktopEntries m_entries;
    QByteArray m_socketName;
};
