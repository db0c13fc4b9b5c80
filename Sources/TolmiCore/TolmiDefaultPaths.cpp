#include "TolmiCore/TolmiDefaultPaths.h"

#include "Foundation/Log.h"

#include <algorithm>
#include <set>

namespace {
using SearchContext = TolmiDefaultPaths::SearchContext;
using OptionalURL = std::optional<FileURL>;

constexpr int ancestorsOfProgram = 8;
constexpr int ancestorsOfBundle = 6;

OptionalURL appSupportRootURL(const SearchContext &context) {
    const OptionalURL support = context.fileManager.applicationSupportDirectory();
    if (!support)
        return std::nullopt;
    return support->appendingPathComponent(QStringLiteral("Tolmi"));
}

FileURL resolved(const SearchContext &context, const OptionalURL &currentDirectoryURL) {
    return currentDirectoryURL ? *currentDirectoryURL : context.fileManager.currentDirectory();
}

/// Adds the standardised `url` and at most `levels` folders above it.
void appendAncestors(const FileURL &url, int levels, std::vector<FileURL> &list) {
    FileURL current = url.standardizedFileURL();
    for (int step = 0; step <= levels; ++step) {
        list.push_back(current);
        const FileURL parent = current.deletingLastPathComponent();
        if (parent == current)
            return;
        current = parent;
    }
}

/// The list without duplicates; the first occurrence is kept.
std::vector<FileURL> uniqueURLs(const std::vector<FileURL> &list) {
    std::set<QString> seen;
    std::vector<FileURL> unique;
    for (const FileURL &url : list) {
        if (seen.insert(url.standardizedFileURL().path()).second)
            unique.push_back(url);
    }
    return unique;
}

/// The folders that may hold the program's files.
std::vector<FileURL> rootCandidates(const SearchContext &context, const FileURL &currentDirectoryURL) {
    std::vector<FileURL> roots { currentDirectoryURL };
    const BundleInfo &bundle = context.bundleInfo;
    if (!bundle.programArgument.isEmpty()) {
        const FileURL program = FileURL(bundle.programArgument).standardizedFileURL();
        appendAncestors(program.deletingLastPathComponent(), ancestorsOfProgram, roots);
    }
    const FileURL bundleURL = bundle.bundleURL.standardizedFileURL();
    appendAncestors(bundleURL, ancestorsOfBundle, roots);
    if (bundleURL.pathExtension() == u"app")
        appendAncestors(bundleURL.deletingLastPathComponent(), ancestorsOfBundle, roots);
    return uniqueURLs(roots);
}

void appendModels(const FileURL &folder, std::vector<FileURL> &list) {
    for (const QString &name : TolmiDefaultPaths::modelFileNames())
        list.push_back(folder.appendingPathComponent(name));
}

/// The first one that is wanted and that no other user can have put there; logs those that are skipped for
/// being unsafe.
template <typename Test>
OptionalURL firstSafe(const SearchContext &context, const std::vector<FileURL> &list, Test isWanted) {
    for (const FileURL &url : list) {
        if (!isWanted(url))
            continue;
        if (context.fileManager.isSafeFromOthers(url.path()))
            return url;
        logLine(
            QStringLiteral("Tolmi: another user may have put this here, so it is not used: ") + url.path());
    }
    return std::nullopt;
}

/// The first location that no other user can write to.
OptionalURL firstSafe(const SearchContext &context, const std::vector<FileURL> &list) {
    const auto found = std::ranges::find_if(
        list, [&](const FileURL &url) { return context.fileManager.isSafeFromOthers(url.path()); });
    return found != list.end() ? OptionalURL(*found) : std::nullopt;
}
} // namespace

namespace TolmiDefaultPaths {

const QStringList &modelFileNames() {
    static const QStringList names {
        QStringLiteral("ggml-large-v3.bin"),
        QStringLiteral("ggml-large-v3-turbo.bin"),
        QStringLiteral("ggml-large-v2.bin"),
        QStringLiteral("ggml-large-v1.bin"),
        QStringLiteral("ggml-large.bin"),
        QStringLiteral("ggml-medium.bin"),
        QStringLiteral("ggml-small.bin"),
        QStringLiteral("ggml-base.bin"),
        QStringLiteral("ggml-medium.en.bin"),
        QStringLiteral("ggml-small.en.bin"),
        QStringLiteral("ggml-base.en.bin"),
    };
    return names;
}

std::vector<FileURL> whisperBinaryCandidates(
    const SearchContext &context, const OptionalURL &currentDirectoryURL) {
    std::vector<FileURL> candidates;
    if (const OptionalURL support = appSupportRootURL(context))
        candidates.push_back(support->appendingPathComponent(QStringLiteral("tools/whisper-cli")));
    for (const FileURL &root : rootCandidates(context, resolved(context, currentDirectoryURL))) {
        candidates.push_back(root.appendingPathComponent(QStringLiteral(".tools/whisper-cli")));
        candidates.push_back(
            root.appendingPathComponent(QStringLiteral(".vendor/whisper.cpp/build/bin/whisper-cli")));
        candidates.push_back(
            root.appendingPathComponent(QStringLiteral(".vendor/whisper.cpp/build/bin/main")));
    }
    candidates.emplace_back(QStringLiteral("/opt/homebrew/bin/whisper-cli"));
    candidates.emplace_back(QStringLiteral("/usr/local/bin/whisper-cli"));
    return uniqueURLs(candidates);
}

std::vector<FileURL> modelCandidates(const SearchContext &context, const OptionalURL &currentDirectoryURL) {
    std::vector<FileURL> candidates;
    if (const OptionalURL support = appSupportRootURL(context))
        appendModels(support->appendingPathComponent(QStringLiteral("models")), candidates);
    for (const FileURL &root : rootCandidates(context, resolved(context, currentDirectoryURL)))
        appendModels(root.appendingPathComponent(QStringLiteral(".models")), candidates);
    return uniqueURLs(candidates);
}

FileURL defaultWhisperBinaryURL(const SearchContext &context) {
    const auto candidates = whisperBinaryCandidates(context);
    const OptionalURL found = firstSafe(context, candidates,
        [&](const FileURL &url) { return context.fileManager.isExecutableFile(url.path()); });
    return found ? *found : firstSafe(context, candidates).value_or(candidates.front());
}

FileURL defaultModelURL(const SearchContext &context, const OptionalURL &currentDirectoryURL) {
    const auto candidates = modelCandidates(context, currentDirectoryURL);
    const OptionalURL found = firstSafe(
        context, candidates, [&](const FileURL &url) { return context.fileManager.fileExists(url.path()); });
    if (found)
        return *found;
    const FileURL standard = resolved(context, currentDirectoryURL)
                                 .appendingPathComponent(QStringLiteral(".models/ggml-large-v3.bin"));
    return context.fileManager.isSafeFromOthers(standard.path())
        ? standard
        : firstSafe(context, candidates).value_or(standard);
}

FileURL legacyDefaultModelURL(const SearchContext &context, const OptionalURL &currentDirectoryURL) {
    return resolved(context, currentDirectoryURL)
        .appendingPathComponent(QStringLiteral(".models/ggml-base.en.bin"));
}

} // namespace TolmiDefaultPaths
