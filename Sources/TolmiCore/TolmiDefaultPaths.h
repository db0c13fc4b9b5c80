#pragma once

#include "Platform/BundleInfo.h"
#include "Platform/FileManager.h"

#include <QStringList>

#include <optional>
#include <vector>

/// Where whisper-cli and a model are likely to be: the user's application support folder, then the folders
/// around the running program, then the system's usual locations. Nothing here fails; if nothing is found, a
/// path is returned anyway, which callers report as missing.
///
/// Other users may be able to write to some of these folders, such as the current directory. A file that
/// another user can have put there does not count as found, and a location another user can write to is never
/// returned.
///
/// `currentDirectoryURL` defaults to the process's current directory.
namespace TolmiDefaultPaths {

/// What the search depends on.
struct SearchContext {
    const FileManager &fileManager;
    BundleInfo bundleInfo;
};

/// The known model files, best first; those for English alone come last.
const QStringList &modelFileNames();

/// Where the binary may be, in order of preference.
std::vector<FileURL> whisperBinaryCandidates(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// Where a model may be, in order of preference.
std::vector<FileURL> modelCandidates(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// The first safe candidate that is executable, else the first safe one.
FileURL defaultWhisperBinaryURL(const SearchContext &context);

/// The first safe candidate that exists, else the best model's path in the current directory, or if that is
/// not safe the first safe candidate.
FileURL defaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// The default model of early versions.
FileURL legacyDefaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

} // namespace TolmiDefaultPaths
