#pragma once

#include "Platform/FileManager.h"
#include "Platform/UserDefaults.h"
#include "TolmiCore/TolmiDefaultPaths.h"

/// The small speech model that comes with the program, so that a first dictation works before anything is
/// downloaded. It is none of the models that the default paths look for: a real one always goes first.
namespace StartingModel {

/// Where it is installed beside the program in the folder `programFolder`.
FileURL url(const FileURL &programFolder);

/// Looks at the stored model path before the settings are built. With no stored path and no real model
/// installed, the starting model's path is stored; a stored starting model gives way as soon as a real one is
/// found.
void choose(
    UserDefaults &defaults, const TolmiDefaultPaths::SearchContext &context, const FileURL &startingModel);

} // namespace StartingModel
