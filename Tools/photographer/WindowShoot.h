#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "photographer/OverlayShoot.h"

/// Takes pictures of the program's windows: the wizard and the Studio of a new user, every workspace of the
/// Studio in three window sizes, and the popup.
class WindowShoot {
public:
    WindowShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);

    /// Takes all of them, or only those of "wizard" or "windows". Returns the names of the pictures that
    /// could not be taken and other failures.
    QStringList run(const QString &only);

private:
    /// The user and the running program.
    struct Stage {
        VirtualUser &user;
        AccessibleProgram windows;
    };

    /// Starts the program as for a new user, with its window at this size.
    bool openWizard(VirtualUser &user, RunningProgram &program, const QSize &size);
    QStringList shootWizard();
    /// The wizard when neither whisper-cli nor a model is found.
    QStringList shootWizardInTrouble();
    QStringList shootDailyLife();
    QStringList shootScenes(const Stage &stage, const QString &suffix);
    /// A menu, a question, and what can be undone.
    QStringList shootChoices(const Stage &stage);
    QStringList shootTemplate(const Stage &stage);
    /// A dictation in progress.
    QStringList shootDictation(const Stage &stage, RunningProgram &program);
    QStringList shootPopup(VirtualUser &user);

    void goTo(const Stage &stage, const char *digit);
    /// Clicks the control with this role and name (any name if empty), the first or the one at index `place`.
    /// Returns what was not found.
    QStringList click(const Stage &stage, const QString &role, const QString &name, int place = 0);
    /// The one of the two for the language of the look.
    QString word(const char *english, const char *romanian) const;
    /// Takes a picture of the Studio once animations have finished, or at once; returns its name if that
    /// failed.
    QStringList saveStudio(const Stage &stage, const QString &subject);
    QStringList saveStudioNow(const Stage &stage, const QString &subject);
    QStringList save(const QRect &place, const QString &subject);

    const ShootOptions &m_options;
    const Look m_look;
    Wallpaper &m_wallpaper;
};
