#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

/// The description of one file in an update feed. Missing values are empty or 0.
struct AppcastItem {
    /// The version compared with the installed one.
    QString version;
    /// The version shown to the user.
    QString displayVersion;
    /// The release notes as plain text.
    QString releaseNotes;
    /// The file's operating system, in lower case.
    QString platform;
    /// As in the feed; may be relative to it.
    QUrl url;
    /// Bytes.
    qint64 length = 0;
    /// The Ed25519 signature of the whole file.
    QByteArray signature;
    /// The Ed25519 signature of versionStatement(), which prevents an old file from being offered as a new
    /// version.
    QByteArray versionSignature;

    friend bool operator==(const AppcastItem &, const AppcastItem &) = default;
};

/// The files of an update feed in order, without those that have no version. A feed is RSS: each item has a
/// `version` and one enclosure for each system, with `url`, `length`, `os` (default "macos"), `edSignature`
/// and `versionSignature`. Throws UpdateError for anything else, also for a feed with a document type,
/// because entity expansion is unbounded.
std::vector<AppcastItem> parseAppcast(const QByteArray &feed);

/// The signed statement that the file with this signature is the given version.
QByteArray versionStatement(const QString &version, const QByteArray &fileSignature);

/// The file with the highest version for `platform`; the first of equals.
std::optional<AppcastItem> newestItem(const std::vector<AppcastItem> &items, const QString &platform);
