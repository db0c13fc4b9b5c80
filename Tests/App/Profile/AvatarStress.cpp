// Feeds spoiled picture files to the storage of avatars. Each must become an avatar or be refused with one of
// the errors that the storage tells of; under a sanitizer, nothing else may come to light.

#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/Pictures.h"
#include "TolmiApp/Profile/ProfileAvatarStorage.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <map>
#include <random>
#include <vector>

namespace {

using Random = std::mt19937_64;

struct Sample {
    QString ending;
    QByteArray content;
};

/// A picture with something in every corner.
QImage colourful() {
    QImage image(40, 30, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor(x * 6, y * 8, (x * y) % 256, 255 - x * 5));
    }
    return image;
}

std::vector<Sample> samples() {
    const QImage image = colourful();
    std::vector<Sample> made {
        { QStringLiteral("jpg"), Pictures::jpegWithOrientation(image, 6) },
        { QStringLiteral("gif"),
            QByteArray::fromHex("47494638396102000200800100ff0000ffffff21f90401000001002c000000000200"
                                "02000002028c51003b") },
        { QStringLiteral("svg"),
            "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'><rect width='90' height='50' "
            "fill='#a03' transform='rotate(12)'/><path d='M1 2 C 30 40 50 60 70 80 Z'/></svg>" },
    };
    for (const char *format : { "PNG", "JPEG", "BMP", "WEBP", "TIFF", "ICO", "ICNS", "PPM", "XPM", "XBM" }) {
        const QByteArray content = Pictures::file(image, format);
        if (!content.isEmpty())
            made.push_back({ QString::fromLatin1(format).toLower(), content });
    }
    made.push_back(
        { QStringLiteral("png"), Pictures::file(image.convertToFormat(QImage::Format_Indexed8), "PNG") });
    return made;
}

quint64 below(Random &random, quint64 limit) {
    return random() % limit;
}

qsizetype place(Random &random, const QByteArray &content) {
    return qsizetype(below(random, quint64(content.size())));
}

void spoilOnce(Random &random, QByteArray &content) {
    static constexpr std::array<char, 6> edges { '\0', '\x01', '\x7f', '\x80', '\xfe', '\xff' };
    if (content.isEmpty())
        return;
    const qsizetype at = place(random, content);
    switch (below(random, 7)) {
    case 0:
        content[at] = char(content[at] ^ (1 << below(random, 8)));
        break;
    case 1:
        content[at] = edges[below(random, edges.size())];
        break;
    case 2:
        // Heads say most about what follows.
        content[at % std::min<qsizetype>(content.size(), 64)] = char(random());
        break;
    case 3:
        content.replace(at, 4, QByteArray(4, edges[below(random, edges.size())]));
        break;
    case 4:
        content.truncate(at);
        break;
    case 5:
        content.insert(at, content.mid(place(random, content), qsizetype(below(random, 200))));
        break;
    default:
        content.remove(at, qsizetype(1 + below(random, 60)));
    }
}

QByteArray spoiled(Random &random, QByteArray content) {
    const quint64 count = 1 + below(random, 4);
    for (quint64 done = 0; done < count; ++done)
        spoilOnce(random, content);
    const bool isMended = below(random, 4) != 0;
    return isMended && content.startsWith("\x89PNG") ? Pictures::withPngCheckSums(content) : content;
}

/// What came of one file: "kept", or the text of the error.
QString outcomeOf(const ProfileAvatarStorage &storage, const FileURL &source) {
    try {
        const ProfileAvatarImportResult result = storage.importAvatar(source);
        const QImage small(storage.resolveURL(result.thumbnailRelativePath)->path(), "JPEG");
        const bool isSmall = !small.isNull() && std::max(small.width(), small.height()) <= 96;
        return isSmall ? QStringLiteral("kept") : QString();
    } catch (const ProfileAvatarStorageError &error) {
        return error.errorDescription();
    }
}

bool write(const QString &path, const QByteArray &content) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption countOption(
        QStringLiteral("count"), {}, QStringLiteral("files"), QStringLiteral("10000"));
    const QCommandLineOption seedOption(
        QStringLiteral("seed"), {}, QStringLiteral("number"), QStringLiteral("1"));
    parser.addOptions({ countOption, seedOption });
    parser.process(application);
    const int count = parser.value(countOption).toInt();
    const quint64 seed = parser.value(seedOption).toULongLong();
    // Decoders say a lot about files like these.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    const QTemporaryDir folder;
    LinuxFileManager files({ .home = {},
        .dataHome = folder.path(),
        .runtime = {},
        .temporary = folder.path(),
        .configHome = {} });
    LinuxFileListing listing;
    LinuxAtomicFileWriter writer(022);
    const ProfileAvatarStorage storage({ files, listing, writer });
    const std::vector<Sample> originals = samples();
    std::map<QString, int> outcomes;
    for (int number = 0; number < count; ++number) {
        Random random(seed * 1'000'003 + quint64(number));
        const Sample &sample = originals[below(random, originals.size())];
        const QString path = folder.filePath(QStringLiteral("picture.") + sample.ending);
        if (!write(path, spoiled(random, sample.content)))
            return 1;
        const QString outcome = outcomeOf(storage, FileURL(path));
        if (outcome.isEmpty()) {
            std::printf(
                "file %d of seed %llu: no thumbnail\n", number, static_cast<unsigned long long>(seed));
            return 1;
        }
        ++outcomes[outcome];
    }
    std::printf("%d files of %zu pictures, seed %llu\n", count, originals.size(),
        static_cast<unsigned long long>(seed));
    for (const auto &[outcome, times] : outcomes)
        std::printf("%6d  %s\n", times, qUtf8Printable(outcome));
    return 0;
}
