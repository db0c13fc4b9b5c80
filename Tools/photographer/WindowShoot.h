#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "photographer/OverlayShoot.h"

/// Pictures of the program's windows: the wizard of a new user, every workspace of the Studio in three sizes
/// of the window, and the popup.
class WindowShoot {
public:
    WindowShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);

    /// Names of the pictures that could not be taken, and other failures; none when all went well.
    QStringList run();

private:
    QStringList shootWizard();
    QStringList shootDailyLife();
    QStringList shootStudio(VirtualUser &user, const AccessibleProgram &program);
    /// An applied template, and a dictation under way.
    QStringList shootWork(VirtualUser &user, RunningProgram &program);
    QStringList shootPopup(VirtualUser &user);
    QStringList saveStudio(const AccessibleProgram &program, const QString &subject);
    /// The name, if the picture was not saved.
    QStringList save(const QRect &place, const QString &subject);

    const ShootOptions &m_options;
    const Look m_look;
    Wallpaper &m_wallpaper;
};
