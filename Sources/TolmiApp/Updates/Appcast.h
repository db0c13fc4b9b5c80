#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

/// One file of an update feed and what the feed tells about it. What the feed leaves out is empty or 0.
struct AppcastItem {
    /// What is compared with the installed version.
    QString version;
    /// What the user reads.
    QString displayVersion;
    /// The release notes as plain text.
    QString releaseNotes;
    /// The system the file is for, in small letters.
    QString platform;
    /// As it stands in the feed; may be relative to it.
    QUrl url;
    /// Bytes.
    qint64 length = 0;
    /// The Ed25519 signature over the whole file.
    QByteArray signature;
    /// The Ed25519 signature over versionStatement(), which keeps an old file from being offered as a new
    /// one.
    QByteArray versionSignature;

    friend bool operator==(const AppcastItem &, const AppcastItem &) = default;
};

/// The files of an update feed in its order; those without a version are left out. A feed is RSS: each item
/// has a `version` and one enclosure for each system, with `url`, `length`, `os`, `edSignature` and
/// `versionSignature` (`os` left out stands for "macos"). Throws UpdateError when it is no such feed; one
/// with a document type is refused, since entities can grow without bound.
std::vector<AppcastItem> parseAppcast(const QByteArray &feed);

/// What the makers sign to say that the file with this signature is the one of this version.
QByteArray versionStatement(const QString &version, const QByteArray &fileSignature);

/// The file of the highest version for `platform`, the first of equals.
std::optional<AppcastItem> newestItem(const std::vector<AppcastItem> &items, const QString &platform);
