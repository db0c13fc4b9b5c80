#include "photographer/ExampleHome.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>
#include <span>

namespace {
struct ExampleEntry {
    const char *said;
    const char *written;
    const char *target;
    const char *targetID;
    /// Hours before now.
    double hoursAgo;
    double seconds;
    /// Name of a sample recording; empty for none.
    const char *sample;
    bool isPinned;
};

const ExampleEntry englishEntries[] = {
    { "thank you for your help john", "Thank you for your help, John.", "Thunderbird", "thunderbird", 0.2,
        1.4, "english-1", false },
    { "um who will update the contract in september", "Who will update the contract in September?", "Firefox",
        "firefox-esr", 0.9, 1.7, "english-2", true },
    { "please move the design review to thursday at ten and uh tell everyone on the team can somebody bring "
      "the "
      "new drawings i will book the large room",
        "Please move the design review to Thursday at ten and tell everyone on the team. Can somebody bring "
        "the new drawings? I will book the large room.",
        "Thunderbird", "thunderbird", 2.5, 6.4, "", false },
    { "the build is green again the flaky test waited for a socket that nobody opened",
        "The build is green again. The flaky test waited for a socket that nobody opened.", "Terminal",
        "xfce4-terminal", 5, 2.3, "", false },
    { "shopping list bread olive oil two lemons and uh coffee",
        "Shopping list: bread, olive oil, two lemons and coffee.", "Mousepad", "org.xfce.mousepad", 26, 1.8,
        "", false },
    { "the first chapter needs a shorter opening the second one is fine as it is",
        "The first chapter needs a shorter opening. The second one is fine as it is.", "LibreOffice Writer",
        "libreoffice-writer", 30, 2.6, "", true },
    { "i will be about ten minutes late please start without me",
        "I will be about ten minutes late. Please start without me.", "Firefox", "firefox-esr", 52, 1.5, "",
        false },
};

const ExampleEntry romanianEntries[] = {
    { "trimite mesajul lui maria c\u00e2t mai repede", "Trimite mesajul lui Maria c\u00e2t mai repede.",
        "Thunderbird", "thunderbird", 0.2, 1.5, "romanian-2", false },
    { "cred p\u0103i c\u0103 trebuie s\u0103 \u0219terg planul",
        "Cred c\u0103 trebuie s\u0103 \u0219terg planul.", "Firefox", "firefox-esr", 0.9, 1.6, "romanian-1",
        true },
    { "\u0219edin\u021ba de m\u00e2ine se mut\u0103 la ora zece \u00een sala mare aduce\u021bi v\u0103 rog "
      "situa\u021bia bugetului eu rezerv sala",
        "\u0218edin\u021ba de m\u00e2ine se mut\u0103 la ora zece, \u00een sala mare. Aduce\u021bi, v\u0103 "
        "rog, situa\u021bia bugetului. Eu rezerv sala.",
        "Thunderbird", "thunderbird", 2.5, 6.1, "", false },
    { "testele trec din nou a\u0219tepta un r\u0103spuns pe care nu \u00eel trimitea nimeni",
        "Testele trec din nou. A\u0219tepta un r\u0103spuns pe care nu \u00eel trimitea nimeni.", "Terminal",
        "xfce4-terminal", 5, 2.2, "", false },
    { "lista de cump\u0103r\u0103turi p\u00e2ine ulei de m\u0103sline dou\u0103 l\u0103m\u00e2i \u0219i "
      "cafea",
        "Lista de cump\u0103r\u0103turi: p\u00e2ine, ulei de m\u0103sline, dou\u0103 l\u0103m\u00e2i \u0219i "
        "cafea.",
        "Mousepad", "org.xfce.mousepad", 26, 1.9, "", false },
    { "primul capitol are nevoie de un \u00eenceput mai scurt",
        "Primul capitol are nevoie de un \u00eenceput mai scurt.", "LibreOffice Writer", "libreoffice-writer",
        30, 1.8, "", true },
    { "\u00eent\u00e2rzii vreo zece minute \u00eencepe\u021bi f\u0103r\u0103 mine",
        "\u00cent\u00e2rzii vreo zece minute. \u00cencepe\u021bi f\u0103r\u0103 mine.", "Firefox",
        "firefox-esr", 52, 1.4, "", false },
};

/// Seconds since 2001-01-01, as stored in the history.
double sinceReferenceDate(const QDateTime &time) {
    static const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    return double(reference.msecsTo(time)) / 1000;
}

/// Copies the sample to the recordings and returns the file name, if any.
QString keepRecording(const QString &sample, const QString &id, const QString &samplesFolder) {
    const QString name = QStringLiteral("recording-") + id + QStringLiteral(".wav");
    QDir().mkpath(dataFolder() + QStringLiteral("/audio-cache"));
    const bool isCopied = QFile::copy(samplesFolder + u'/' + sample + QStringLiteral(".wav"),
        dataFolder() + QStringLiteral("/audio-cache/") + name);
    return isCopied ? name : QString();
}

QJsonObject stored(const ExampleEntry &entry, const Look &look, const QString &samplesFolder) {
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    const double made
        = sinceReferenceDate(QDateTime::currentDateTimeUtc().addMSecs(-qint64(entry.hoursAgo * 3600 * 1000)));
    QJsonObject object { { "id", id }, { "timestamp", made }, { "rawText", QString::fromUtf8(entry.said) },
        { "refinedText", QString::fromUtf8(entry.written) }, { "language", look.language },
        { "durationSeconds", entry.seconds }, { "pasteTargetAppName", entry.target },
        { "pasteTargetBundleID", entry.targetID }, { "pasteTimestamp", made + entry.seconds },
        { "qualityPass", "single" }, { "isPinned", entry.isPinned } };
    if (*entry.sample)
        object.insert("audioFileRelativePath", keepRecording(entry.sample, id, samplesFolder));
    return object;
}

std::span<const ExampleEntry> entries(const Look &look) {
    return look.isRomanian() ? std::span<const ExampleEntry>(romanianEntries) : englishEntries;
}

bool writeHistory(const Look &look, const QString &samplesFolder) {
    QJsonArray history;
    for (const ExampleEntry &entry : entries(look))
        history.append(stored(entry, look, samplesFolder));
    QFile file(dataFolder() + QStringLiteral("/history.json"));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(history).toJson()) > 0;
}
} // namespace

bool prepareExampleHome(const Look &look, HomeOptions options, const QString &samplesFolder) {
    options.language = look.language;
    options.settings.insert("tolmi.uiLanguage", look.language);
    // The health checks display this path.
    if (!options.settings.contains("tolmi.whisperBinaryPath"))
        options.settings.insert("tolmi.whisperBinaryPath", options.whisperCLI);
    options.settings.insert("tolmi.appearance", look.scheme);
    options.settings.insert(
        "tolmi.profileDisplayName", look.isRomanian() ? "Ioana Marinescu" : "Andrew Cole");
    QDir(dataFolder() + QStringLiteral("/audio-cache")).removeRecursively();
    return prepareHome(options) && writeHistory(look, samplesFolder);
}

QString longestExample(const Look &look) {
    QString longest;
    for (const ExampleEntry &entry : entries(look))
        longest = std::max(longest, QString::fromUtf8(entry.written),
            [](const QString &one, const QString &other) { return one.size() < other.size(); });
    return longest;
}
