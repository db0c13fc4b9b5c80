#include "TolmiApp/Updates/UpdateDownload.h"

#include "Foundation/Log.h"
#include "Foundation/QueuedWork.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/FileListing.h"
#include "Platform/FileManager.h"
#include "Platform/SignatureVerifier.h"
#include "TolmiApp/Updates/SoftwareVersion.h"
#include "TolmiApp/Updates/UpdateError.h"

namespace {
using Code = UpdateError::Code;

constexpr qsizetype publicKeySize = 32;
constexpr qsizetype signatureSize = 64;
/// Seconds; generous, for large updates on slow connections.
constexpr double longestDownload = 24 * 3600;

void require(bool condition, Code otherwise) {
    if (!condition)
        throw UpdateError(otherwise);
}

QByteArray keyOf(const UpdateSource &source) {
    return QByteArray::fromBase64(source.publicKey.trimmed().toLatin1());
}

HttpRequest getRequest(const QUrl &url, qint64 maximumBodySize) {
    HttpRequest request;
    request.url = url;
    request.maximumBodySize = maximumBodySize;
    return request;
}

void requireSafe(const AppcastItem &item, const UpdateSource &source, const SignatureVerifier &signatures) {
    require(source.mayAsk(item.url), Code::Insecure);
    require(item.signature.size() == signatureSize && item.versionSignature.size() == signatureSize,
        Code::Unsigned);
    const QByteArray statement = versionStatement(item.version, item.signature);
    require(signatures.isValid(item.versionSignature, statement, keyOf(source)), Code::WrongVersion);
    require(item.length > 0 && item.length <= maximumUpdateSize, Code::InvalidSize);
}

/// A safe file name from the last component of the URL, which the server controls.
QString fileName(const AppcastItem &item) {
    QString name = item.url.path(QUrl::FullyDecoded).section(u'/', -1);
    name.removeIf([](QChar character) { return !character.isPrint(); });
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    return name.isEmpty() ? QStringLiteral("tolmi-update") : name;
}

FileURL freeURL(const FileManager &fileManager, const FileURL &folder, const QString &name) {
    FileURL url = folder.appendingPathComponent(name);
    for (int number = 2; fileManager.fileExists(url.path()); ++number)
        url = folder.appendingPathComponent(QStringLiteral("%1-%2").arg(number).arg(name));
    return url;
}

void remove(FileListing &files, const FileURL &url) {
    try {
        files.removeItem(url);
    } catch (const SystemError &error) {
        logLine(
            QStringLiteral("Tolmi: a cancelled update could not be removed: ") + error.errorDescription());
    }
}
} // namespace

bool isSecureURL(const QUrl &url) {
    return url.isValid() && url.scheme() == u"https" && !url.host().isEmpty();
}

Task<std::optional<AppcastItem>> findUpdate(UpdatePlatform platform, UpdateSource source) {
    require(keyOf(source).size() == publicKeySize, Code::InvalidPublicKey);
    require(source.mayAsk(source.feedURL), Code::Insecure);
    const HttpResponse response = co_await platform.http.send(getRequest(source.feedURL, maximumFeedSize));
    require(response.statusCode == 200, Code::Refused);
    require(response.body.has_value(), Code::InvalidFeed);
    std::optional<AppcastItem> item = newestItem(parseAppcast(*response.body), source.platform);
    if (!item || compareVersions(item->version, source.installedVersion) <= 0)
        co_return std::nullopt;
    item->url = source.feedURL.resolved(item->url);
    requireSafe(*item, source, platform.signatures);
    co_return item;
}

Task<FileURL> downloadUpdate(
    UpdatePlatform platform, UpdateSource source, AppcastItem item, HttpProgress progress) {
    requireSafe(item, source, platform.signatures);
    HttpRequest request = getRequest(item.url, item.length);
    request.totalTimeout = longestDownload;
    const HttpResponse response = co_await platform.http.download(std::move(request), progress);
    require(response.statusCode == 200, Code::Refused);
    require(response.body && response.body->size() == item.length, Code::WrongSize);
    const QByteArray content = *response.body;
    const auto isGenuine = [&signatures = platform.signatures, item, content, key = keyOf(source)] {
        return signatures.isValid(item.signature, content, key);
    };
    const bool isFromTheMakers = co_await runOn(platform.fileQueue, platform.clock, isGenuine);
    require(isFromTheMakers, Code::WrongSignature);
    require(progress(item.length), Code::Cancelled);
    // Writes exactly the bytes that were verified.
    const auto write = [platform, item, content, folder = source.downloadsDirectory] {
        platform.fileManager.createDirectory(folder);
        const FileURL url = freeURL(platform.fileManager, folder, fileName(item));
        platform.fileWriter.write(url, content, FilePrivacy::AsUsual);
        return url;
    };
    FileURL url = co_await runOn(platform.fileQueue, platform.clock, write);
    if (!progress(item.length)) {
        platform.fileQueue.async([&files = platform.fileListing, url] { remove(files, url); });
        throw UpdateError(Code::Cancelled);
    }
    co_return url;
}
