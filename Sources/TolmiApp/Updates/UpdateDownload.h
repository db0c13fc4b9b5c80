#pragma once

#include "Foundation/FileURL.h"
#include "Platform/HttpClient.h"
#include "TolmiApp/Updates/Appcast.h"

class AtomicFileWriter;
class Clock;
class FileListing;
class FileManager;
class SerialQueue;
class SignatureVerifier;
class UserDefaults;

/// The platform services that the updater uses. All must outlive the updater.
struct UpdatePlatform {
    HttpClient &http;
    UserDefaults &defaults;
    Clock &clock;
    FileManager &fileManager;
    FileListing &fileListing;
    AtomicFileWriter &fileWriter;
    const SignatureVerifier &signatures;
    /// Verifies and writes files.
    SerialQueue &fileQueue;
};

/// Whether the transport of `url` is protected against eavesdropping and modification.
bool isSecureURL(const QUrl &url);

/// Where updates come from and where they are saved.
struct UpdateSource {
    QUrl feedURL;
    /// Ed25519, base64.
    QString publicKey;
    QString installedVersion;
    /// This program's operating system, as named in feeds.
    QString platform = QStringLiteral("linux");
    FileURL downloadsDirectory;
    /// Whether a URL is safe to request.
    std::function<bool(const QUrl &)> mayAsk = &isSecureURL;
};

/// Maximum sizes of feed and update in bytes.
inline constexpr qint64 maximumFeedSize = 1024LL * 1024;
inline constexpr qint64 maximumUpdateSize = 512LL * 1024 * 1024;

/// The newest version in the feed, if newer than the installed one. Throws HttpError or UpdateError, the
/// latter also for a newer version that cannot be downloaded safely.
Task<std::optional<AppcastItem>> findUpdate(UpdatePlatform platform, UpdateSource source);

/// Downloads the file of `item`, verifies size and signature, saves it in the download folder under an unused
/// name, and returns its URL. `progress` receives the number of bytes and may cancel, last when the download
/// is complete. Throws UpdateError, HttpError or SystemError and then leaves no file.
Task<FileURL> downloadUpdate(
    UpdatePlatform platform, UpdateSource source, AppcastItem item, HttpProgress progress);
