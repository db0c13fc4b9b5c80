#include "dictate/Dictation.h"
#include "dictate/Home.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTextStream>
#include <QTimer>

namespace {
QTextStream &out() {
    static QTextStream stream(stdout);
    return stream;
}

int fail(const QString &reason) {
    QTextStream(stderr) << "tolmi-dictate: " << reason << Qt::endl;
    return 1;
}

QString seconds(std::optional<double> value) {
    return value ? QString::number(*value, 'f', 3) + " s" : QStringLiteral("-");
}

QString described(const std::optional<HistoryRecord> &record) {
    if (!record)
        return "no entry";
    return record->target + " (" + record->bundleID + "), " + record->recording + ", pass " + record->pass
        + ", " + seconds(record->duration);
}

QString keepRecording(const QString &recording, const QString &folder) {
    if (recording.isEmpty())
        return QStringLiteral("-");
    const QString kept = folder + u'/' + QFileInfo(recording).fileName();
    return QFile::copy(recording, kept) ? kept : QStringLiteral("could not be copied to ") + kept;
}

void print(const DictationReport &report, const QString &file) {
    out() << "\n" << QFileInfo(file).fileName() << "\n  states:";
    for (const auto &[state, time] : report.states)
        out() << "  " << state << " " << QString::number(time, 'f', 3);
    out() << "\n  key-down to recording: " << seconds(report.keyDownToRecording)
          << "\n  key-up to text:        " << seconds(report.keyUpToPaste)
          << "\n  whisper-cli alone:     " << seconds(report.transcription)
          << "\n  clipboard afterwards:  " << (report.isClipboardRestored ? "the user's own" : "CHANGED")
          << "\n  history:               " << described(report.history) << "\npasted: " << report.pasted
          << "\n";
    if (!report.failure.isEmpty())
        out() << "  failed: " << report.failure << "\n";
    out().flush();
}

QString takeScreenshot(const QString &folder, const QString &name) {
    const QString path = folder + '/' + name;
    return QGuiApplication::primaryScreen()->grabWindow(0).save(path) ? path : QStringLiteral("-");
}
} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Does real dictations on the desktop it is started on.");
    parser.addHelpOption();
    addHomeOptions(parser);
    parser.addOption({ "out", "folder for the screenshot and the recordings", "folder", "." });
    parser.addPositionalArgument("files", "WAV files to speak", "FILE.wav...");
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    const QString outputFolder = parser.value("out");
    if (files.isEmpty())
        return fail("name at least one WAV file");
    if (!prepareHome(homeOptions(parser)))
        return fail("the home of this desktop could not be prepared");
    QDir().mkpath(outputFolder);

    VirtualUser user;
    RunningProgram program;
    if (!program.start(QCoreApplication::applicationDirPath() + "/tolmi"))
        return fail("the program did not start:\n" + program.output());
    Editor editor(user);
    if (!editor.open())
        return fail("the editor did not get the focus");

    // Captured during the first dictation, early enough for any recording.
    QString whileSpeaking;
    QTimer::singleShot(std::chrono::milliseconds(1500),
        [&] { whileSpeaking = takeScreenshot(outputFolder, "while-speaking.png"); });
    int failures = 0;
    for (const QString &file : files) {
        const DictationReport report = dictate({ user, program, editor }, file);
        print(report, file);
        out() << "  recording: " << keepRecording(report.recordingPath, outputFolder) << Qt::endl;
        if (report.pasted.isEmpty() || !report.history || !report.failure.isEmpty())
            ++failures;
    }
    out() << "\nscreenshots: " << whileSpeaking << "\n             "
          << takeScreenshot(outputFolder, "afterwards.png") << Qt::endl;
    if (failures > 0) {
        return fail(QString::number(failures) + " of " + QString::number(files.size())
            + " dictations left no text in the editor or no entry in the history\n" + program.output());
    }
    return 0;
}
