#pragma once

#include "Platform/BundleInfo.h"
#include "Platform/FileManager.h"

#include <QStringList>

#include <optional>
#include <vector>

/// Where whisper-cli and a model are likely to be: from the user's application support folder over the
/// folders round the running program to the usual places of the system. Nothing here fails; where nothing is
/// found a path is given all the same, for others to report as missing.
///
/// Some of these folders may be anybody's: the current directory is wherever the program was started. What
/// another user can have put there does not count as found, and no path is given where one could put it.
///
/// `currentDirectoryURL` is, where it is left out, the process's current directory.
namespace TolmiDefaultPaths {

/// What the search depends on.
struct SearchContext {
    const FileManager &fileManager;
    BundleInfo bundleInfo;
};

/// The known model files, best first; those for English alone come last.
const QStringList &modelFileNames();

/// Where the binary may be, in the order of preference.
std::vector<FileURL> whisperBinaryCandidates(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// Where a model may be, in the order of preference.
std::vector<FileURL> modelCandidates(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// The first safe candidate that is executable, else the first safe one.
FileURL defaultWhisperBinaryURL(const SearchContext &context);

/// The first safe candidate that exists, else the best model's place in the current directory, or where that
/// is not safe the first safe candidate.
FileURL defaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// The model that early versions took.
FileURL legacyDefaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

} // namespace TolmiDefaultPaths
