#pragma once

#include "Platform/FileManager.h"
#include "Platform/UserDefaults.h"
#include "TolmiCore/TolmiDefaultPaths.h"

/// The small speech model bundled with the program, so that a first dictation works before anything is
/// downloaded. It is not among the models that the default paths search for: a real one always takes
/// precedence.
namespace StartingModel {

/// Its installed path, next to the program in `programFolder`.
FileURL url(const FileURL &programFolder);

/// Adjusts the stored model path before the settings are built: stores the starting model's path if no path
/// is stored and no real model is installed; removes it again once a real model is found.
void choose(
    UserDefaults &defaults, const TolmiDefaultPaths::SearchContext &context, const FileURL &startingModel);

} // namespace StartingModel
