#include "TolmiApp/Updates/UpdateDownload.h"

#include "Foundation/QueuedWork.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/FileManager.h"
#include "Platform/SignatureVerifier.h"
#include "TolmiApp/Updates/SoftwareVersion.h"
#include "TolmiApp/Updates/UpdateError.h"

namespace {
using Code = UpdateError::Code;

constexpr qsizetype publicKeySize = 32;
constexpr qsizetype signatureSize = 64;
/// Seconds; an update is large and a line may be slow.
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

void requireSafe(const AppcastItem &item, const UpdateSource &source) {
    require(source.mayAsk(item.url), Code::Insecure);
    require(item.signature.size() == signatureSize, Code::Unsigned);
    require(item.length > 0 && item.length <= maximumUpdateSize, Code::InvalidSize);
}

/// The last part of the address, which a server chose, as a plain name that hides nothing.
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
    requireSafe(*item, source);
    co_return item;
}

Task<FileURL> downloadUpdate(
    UpdatePlatform platform, UpdateSource source, AppcastItem item, HttpProgress progress) {
    requireSafe(item, source);
    HttpRequest request = getRequest(item.url, item.length);
    request.totalTimeout = longestDownload;
    const HttpResponse response = co_await platform.http.download(std::move(request), std::move(progress));
    require(response.statusCode == 200, Code::Refused);
    require(response.body && response.body->size() == item.length, Code::WrongSize);
    const auto checkAndWrite = [platform, item, content = *response.body, key = keyOf(source),
                                   folder = source.downloadsDirectory] {
        // The very bytes that were checked are written.
        require(platform.signatures.isValid(item.signature, content, key), Code::WrongSignature);
        platform.fileManager.createDirectory(folder);
        const FileURL url = freeURL(platform.fileManager, folder, fileName(item));
        platform.fileWriter.write(url, content, FilePrivacy::AsUsual);
        return url;
    };
    co_return co_await runOn(platform.fileQueue, platform.clock, checkAndWrite);
}
