#include "App/Updates/UpdateFixture.h"

QByteArray PublishedUpdate::feed() const {
    const QByteArray statement = versionStatement(QString::fromUtf8(version).trimmed(), signature);
    const QByteArray signedVersion = versionSignature ? *versionSignature : key.sign(statement);
    return "<rss xmlns:sparkle=\"urn:updates\"><channel><item><sparkle:version>" + version
        + "</sparkle:version><description>&lt;p&gt;Faster&lt;/p&gt;</description><enclosure url=\"" + url
        + "\" length=\"" + length + "\" sparkle:os=\"linux\" sparkle:edSignature=\"" + signature.toBase64()
        + "\" sparkle:versionSignature=\"" + signedVersion.toBase64() + "\"/></item></channel></rss>";
}

UpdateSource PublishedUpdate::source(const QUrl &feedURL, const FileURL &downloadsDirectory) const {
    UpdateSource source;
    source.feedURL = feedURL;
    source.publicKey = QString::fromLatin1(key.publicKey().toBase64());
    source.installedVersion = QStringLiteral("1.0");
    source.downloadsDirectory = downloadsDirectory;
    return source;
}
