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

/// The first candidate that is executable, else the first candidate.
FileURL defaultWhisperBinaryURL(const SearchContext &context);

/// The first candidate that exists, else the best model's place in the current directory.
FileURL defaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

/// The model that early versions took.
FileURL legacyDefaultModelURL(
    const SearchContext &context, const std::optional<FileURL> &currentDirectoryURL = std::nullopt);

} // namespace TolmiDefaultPaths
