#pragma once

#include "Platform/FrontmostApplication.h"
#include "Platform/Linux/Desktop/DesktopEntries.h"

#include <QByteArray>

#include <memory>

class X11Display;

/// The application of the window that the window manager calls active. Its bundle identifier is the id of its
/// desktop file, or the name that the window gives itself where there is no such file. Main thread only.
class X11FrontmostApplication final : public FrontmostApplication {
public:
    /// An empty name stands for the display of the environment.
    explicit X11FrontmostApplication(DesktopEntries entries, const QByteArray &displayName = {});
    ~X11FrontmostApplication() override;

    std::optional<FrontApplication> current() override;

private:
    DesktopEntries m_entries;
    std::unique_ptr<X11Display> m_display;
};
