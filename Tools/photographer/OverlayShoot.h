#pragma once

#include "dictate/Dictation.h"
#include "photographer/ExampleHome.h"
#include "photographer/Wallpaper.h"

#include <QImage>
#include <QMap>

/// Options of all shoots.
struct ShootOptions {
    QString program;
    /// Folder of the recordings to play.
    QString samplesFolder;
    QString outputFolder;
    HomeOptions home {};

    QString sample(const QString &name) const { return samplesFolder + u'/' + name + QStringLiteral(".wav"); }
};

/// Takes pictures of the overlay in every state of a dictation: a good one, a quiet one that is transcribed
/// twice, and one that fails. With the pointer on the overlay, the picture includes its tool tip.
class OverlayShoot {
public:
    OverlayShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);

    /// Returns the names of the states without a picture and other failures.
    QStringList run();

private:
    /// Dictates and keeps the last picture of each state.
    void dictateAndWatch(const DictationStage &stage, const QString &wavPath);
    /// Saves the pictures and returns the states that were not seen.
    QStringList save(const QStringList &states);
    QString modelPath() const;
    QString quietRecording() const;

    const ShootOptions &m_options;
    const Look m_look;
    Wallpaper &m_wallpaper;
    QMap<QString, QImage> m_pictures;
};

/// Positions of the windows in the pictures.
namespace Place {
/// The overlay and its surroundings.
inline constexpr QRect overlay(780, 0, 360, 200);
inline constexpr QPoint onOverlay(960, 83);
inline constexpr QPoint nowhere(1900, 1060);
} // namespace Place

/// Moves and resizes the focused window.
void placeActiveWindow(const QRect &place);
