#pragma once

#include "Platform/FileManager.h"

/// The folder "Tolmi" that contains all files of the program: in the user's application support folder, or in
/// the temporary folder if the system has none. It need not exist.
FileURL tolmiRootDirectoryURL(const FileManager &fileManager);

/// Whether the path is present and, relative to a folder, cannot leave that folder.
bool staysInFolder(const std::optional<QString> &relativePath);
