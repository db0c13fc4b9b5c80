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

/// What the updater asks of the platform. All of it outlives the updater.
struct UpdatePlatform {
    HttpClient &http;
    UserDefaults &defaults;
    Clock &clock;
    FileManager &fileManager;
    FileListing &fileListing;
    AtomicFileWriter &fileWriter;
    const SignatureVerifier &signatures;
    /// Where whole files are checked and written.
    SerialQueue &fileQueue;
};

/// Whether nobody on the way can read or change what comes from `url`.
bool isSecureURL(const QUrl &url);

/// Where updates come from and where they go.
struct UpdateSource {
    QUrl feedURL;
    /// Ed25519, base64.
    QString publicKey;
    QString installedVersion;
    /// The system of this program as feeds name it.
    QString platform = QStringLiteral("linux");
    FileURL downloadsDirectory;
    /// Whether an address is safe to ask.
    std::function<bool(const QUrl &)> mayAsk = &isSecureURL;
};

/// The greatest feed and the greatest update that are taken, in bytes.
inline constexpr qint64 maximumFeedSize = 1024LL * 1024;
inline constexpr qint64 maximumUpdateSize = 512LL * 1024 * 1024;

/// The newest version of the feed if it is newer than the installed one. Throws UpdateError, also for a newer
/// version that could not be downloaded safely, or HttpError.
Task<std::optional<AppcastItem>> findUpdate(UpdatePlatform platform, UpdateSource source);

/// Fetches the file of `item` and, once its size and its signature are right, puts it into the folder of
/// downloads under a name that is still free; gives its place. `progress` hears of the bytes and may end it,
/// for the last time when the file is there. Throws UpdateError, HttpError or SystemError; then there is no
/// file.
Task<FileURL> downloadUpdate(
    UpdatePlatform platform, UpdateSource source, AppcastItem item, HttpProgress progress);
