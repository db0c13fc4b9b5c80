#pragma once

#include "photographer/OverlayShoot.h"

/// Films one dictation from the key press to the text in the editor and writes it as `dictation.gif`. What
/// went wrong; empty when nothing did.
QString filmDictation(const ShootOptions &options, const Look &look, Wallpaper &wallpaper);
