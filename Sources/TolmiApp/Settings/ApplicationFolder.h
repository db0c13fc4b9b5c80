#pragma once

#include "Platform/FileManager.h"

/// The folder "Tolmi" that holds all files of the program: in the user's application support folder, or in
/// the temporary one where the system names none. It need not exist.
FileURL tolmiRootDirectoryURL(const FileManager &fileManager);

/// Whether a path is there that, counted from a folder, cannot lead out of it.
bool staysInFolder(const std::optional<QString> &relativePath);
