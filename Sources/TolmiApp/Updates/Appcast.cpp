#include "TolmiApp/Updates/Appcast.h"

#include "TolmiApp/Updates/ReleaseNotes.h"
#include "TolmiApp/Updates/SoftwareVersion.h"
#include "TolmiApp/Updates/UpdateError.h"

#include <QXmlStreamReader>

namespace {
/// The attribute of this name in any namespace.
QString attribute(const QXmlStreamReader &reader, QStringView name) {
    for (const QXmlStreamAttribute &candidate : reader.attributes()) {
        if (candidate.name() == name)
            return candidate.value().trimmed().toString();
    }
    return {};
}

AppcastItem enclosure(const QXmlStreamReader &reader) {
    AppcastItem file;
    file.version = attribute(reader, u"version");
    file.displayVersion = attribute(reader, u"shortVersionString");
    file.platform = attribute(reader, u"os").toLower();
    if (file.platform.isEmpty())
        file.platform = QStringLiteral("macos");
    file.url = QUrl(attribute(reader, u"url"));
    file.length = attribute(reader, u"length").toLongLong();
    file.signature = QByteArray::fromBase64(attribute(reader, u"edSignature").toLatin1());
    file.versionSignature = QByteArray::fromBase64(attribute(reader, u"versionSignature").toLatin1());
    return file;
}

class AppcastReader {
public:
    explicit AppcastReader(const QByteArray &feed)
        : m_reader(feed) { }

    std::vector<AppcastItem> read() {
        expectRoot();
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() == u"channel")
                readChannel();
            else
                m_reader.skipCurrentElement();
        }
        // Content after the root element makes the feed invalid too.
        while (!m_reader.atEnd())
            m_reader.readNext();
        if (m_reader.hasError())
            throw UpdateError(UpdateError::Code::InvalidFeed);
        return std::move(m_files);
    }

private:
    void expectRoot() {
        while (m_reader.readNext() != QXmlStreamReader::StartElement) {
            if (m_reader.atEnd() || m_reader.tokenType() == QXmlStreamReader::DTD)
                throw UpdateError(UpdateError::Code::InvalidFeed);
        }
        if (m_reader.name() != u"rss")
            throw UpdateError(UpdateError::Code::InvalidFeed);
    }

    void readChannel() {
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() == u"item")
                readItem();
            else
                m_reader.skipCurrentElement();
        }
    }

    void readItem() {
        AppcastItem shared;
        std::vector<AppcastItem> files;
        while (m_reader.readNextStartElement())
            readPart(shared, files);
        for (AppcastItem &file : files)
            add(file, shared);
    }

    void readPart(AppcastItem &shared, std::vector<AppcastItem> &files) {
        if (m_reader.name() == u"version")
            shared.version = text();
        else if (m_reader.name() == u"shortVersionString")
            shared.displayVersion = text();
        else if (m_reader.name() == u"description")
            shared.releaseNotes = plainReleaseNotes(text());
        else {
            if (m_reader.name() == u"enclosure")
                files.push_back(enclosure(m_reader));
            m_reader.skipCurrentElement();
        }
    }

    QString text() { return m_reader.readElementText(QXmlStreamReader::SkipChildElements).trimmed(); }

    void add(AppcastItem &file, const AppcastItem &shared) {
        if (!shared.version.isEmpty())
            file.version = shared.version;
        if (file.version.isEmpty())
            return;
        if (!shared.displayVersion.isEmpty())
            file.displayVersion = shared.displayVersion;
        if (file.displayVersion.isEmpty())
            file.displayVersion = file.version;
        file.releaseNotes = shared.releaseNotes;
        m_files.push_back(std::move(file));
    }

    QXmlStreamReader m_reader;
    std::vector<AppcastItem> m_files;
};
} // namespace

std::vector<AppcastItem> parseAppcast(const QByteArray &feed) {
    return AppcastReader(feed).read();
}

QByteArray versionStatement(const QString &version, const QByteArray &fileSignature) {
    return "tolmi " + version.toUtf8() + '\n' + fileSignature.toBase64() + '\n';
}

std::optional<AppcastItem> newestItem(const std::vector<AppcastItem> &items, const QString &platform) {
    const AppcastItem *newest = nullptr;
    for (const AppcastItem &item : items) {
        const bool isCandidate = item.platform == platform;
        if (isCandidate && (!newest || compareVersions(item.version, newest->version) > 0))
            newest = &item;
    }
    return newest ? std::optional(*newest) : std::nullopt;
}
