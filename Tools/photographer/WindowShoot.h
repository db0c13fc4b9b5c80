#pragma once

#include "desktop-driver/AccessibleProgram.h"
#include "photographer/OverlayShoot.h"

/// Pictures of the program's windows: the wizard of a new user and what the Studio is to them afterwards,
/// every workspace of the Studio in three sizes of the window, and the popup.
class WindowShoot {
public:
    WindowShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);

    /// Takes them all, or only those of "wizard" or "windows". Names of the pictures that could not be taken,
    /// and other failures; none when all went well.
    QStringList run(const QString &only);

private:
    /// The user in front of the running program.
    struct Stage {
        VirtualUser &user;
        AccessibleProgram windows;
    };

    /// Starts the program as a newcomer finds it, with its window at this size.
    bool openWizard(VirtualUser &user, RunningProgram &program, const QSize &size);
    QStringList shootWizard();
    /// The wizard where neither whisper-cli nor a model is found.
    QStringList shootWizardInTrouble();
    QStringList shootDailyLife();
    QStringList shootScenes(const Stage &stage, const QString &suffix);
    /// A menu, a question, and what can be undone.
    QStringList shootChoices(const Stage &stage);
    QStringList shootTemplate(const Stage &stage);
    /// A dictation under way.
    QStringList shootDictation(const Stage &stage, RunningProgram &program);
    QStringList shootPopup(VirtualUser &user);

    void goTo(const Stage &stage, const char *digit);
    /// Clicks the control with this role and name, or any name when it is empty; the first of them, or the
    /// one at `place`. What is not there is the result.
    QStringList click(const Stage &stage, const QString &role, const QString &name, int place = 0);
    /// The interface's word in the language of the look.
    QString word(const char *english, const char *romanian) const;
    /// A picture of the Studio when everything has come to rest in it, or at once; the name, if it was not
    /// saved.
    QStringList saveStudio(const Stage &stage, const QString &subject);
    QStringList saveStudioNow(const Stage &stage, const QString &subject);
    QStringList save(const QRect &place, const QString &subject);

    const ShootOptions &m_options;
    const Look m_look;
    Wallpaper &m_wallpaper;
};
