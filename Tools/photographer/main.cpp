#include "photographer/Film.h"
#include "photographer/OverlayShoot.h"
#include "photographer/WindowShoot.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

namespace {
int ended(const QStringList &failures) {
    for (const QString &failure : failures)
        QTextStream(stderr) << "tolmi-screenshots: missing: " << failure << Qt::endl;
    return failures.isEmpty() ? 0 : 1;
}

QList<Look> looks(const QString &only) {
    QList<Look> looks;
    for (const QString scheme : { "dark", "light" }) {
        for (const QString language : { "en", "ro" }) {
            const Look look { scheme, language };
            if (only.isEmpty() || look.name() == only)
                looks.append(look);
        }
    }
    return looks;
}
} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Uses the real program on the desktop it is started on and takes pictures of it.");
    parser.addHelpOption();
    addHomeOptions(parser);
    parser.addOption({ "samples", "folder of the recordings that are spoken", "folder" });
    parser.addOption({ "look", "only these: dark-en, dark-ro, light-en or light-ro", "name" });
    parser.addOption({ "only", "one of overlay, wizard and windows", "name" });
    parser.addOption({ "film", "films a dictation instead" });
    parser.addPositionalArgument("folder", "where the pictures go");
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);
    ShootOptions options { QCoreApplication::applicationDirPath() + "/tolmi", parser.value("samples"),
        parser.positionalArguments().first(), homeOptions(parser) };
    QDir().mkpath(options.outputFolder);

    Wallpaper wallpaper;
    if (parser.isSet("film")) {
        const QString failure = filmDictation(options, looks(parser.value("look")).value(0), wallpaper);
        return ended(failure.isEmpty() ? QStringList() : QStringList { failure });
    }
    const QString only = parser.value("only");
    QStringList failures;
    for (const Look &look : looks(parser.value("look"))) {
        if (only.isEmpty() || only == u"overlay")
            failures += OverlayShoot(options, look, wallpaper).run();
        failures += WindowShoot(options, look, wallpaper).run(only);
    }
    return ended(failures);
}
