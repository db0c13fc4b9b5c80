#pragma once

#include "photographer/OverlayShoot.h"

/// Films one dictation from the key press to the text in the editor and writes `dictation.gif`. Returns an
/// error message, empty on success.
QString filmDictation(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);
