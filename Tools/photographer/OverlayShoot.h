#pragma once

#include "dictate/Dictation.h"
#include "photographer/ExampleHome.h"
#include "photographer/Wallpaper.h"

#include <QImage>
#include <QMap>

/// What the shoots are given.
struct ShootOptions {
    QString program;
    /// Folder of the recordings that are spoken.
    QString samplesFolder;
    QString outputFolder;
    HomeOptions home {};

    QString sample(const QString &name) const { return samplesFolder + u'/' + name + QStringLiteral(".wav"); }
};

/// Pictures of the overlay in every state that a dictation shows: a good one, a quiet one that is
/// transcribed twice, and one that fails. Where the pointer rests on the overlay, its words are in the
/// picture.
class OverlayShoot {
public:
    OverlayShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);

    /// Names of the states of which there is no picture afterwards, and other failures; none when all went
    /// well.
    QStringList run();

private:
    /// Dictates and keeps the last picture of each state.
    void dictateAndWatch(const DictationStage &stage, const QString &wavPath);
    /// Those of the states that were not seen.
    QStringList save(const QStringList &states);
    QString modelPath() const;
    QString quietRecording() const;

    const ShootOptions &m_options;
    const Look m_look;
    Wallpaper &m_wallpaper;
    QMap<QString, QImage> m_pictures;
};

/// Where the windows of the pictures stand.
namespace Place {
/// The overlay and what is around it.
inline constexpr QRect overlay(780, 0, 360, 200);
inline constexpr QPoint onOverlay(960, 83);
inline constexpr QPoint nowhere(1900, 1060);
} // namespace Place

/// Gives the window that has the focus a place.
void placeActiveWindow(const QRect &place);
