// Measures whole dictations of the real program from outside, on the current desktop. Every figure with a
// target is a ratio or difference of two values measured in the same run, because machines are noisy.

#include "dictate/Dictation.h"
#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <unistd.h>

#include <algorithm>

namespace {
// Seconds that the paste blocks the main thread on purpose, so that the target sees the new clipboard.
constexpr double pasteWait = 0.05;

QTextStream &out() {
    static QTextStream stream(stdout);
    return stream;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

QString milliseconds(double seconds) {
    return QString::number(seconds * 1000, 'f', 1) + " ms";
}

void printRow(const QString &what, const QString &value, const QString &goal) {
    out() << "  " << what.leftJustified(58) << value.rightJustified(12) << "   " << goal << Qt::endl;
}

// Runs whisper-cli directly with the arguments of the program's first pass.
double secondsOfWhisperAlone(const HomeOptions &home, const QString &recording) {
    const QTemporaryDir folder;
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(home.whisperCLI,
        { "-m", home.model, "-f", recording, "-l", home.language, "-bo", "2", "-bs", "2", "-tp", "0", "-otxt",
            "-of", folder.filePath("transcript") });
    process.waitForFinished(60000);
    return double(timer.nsecsElapsed()) / 1e9;
}

struct ProcessUse {
    double cpuSeconds = 0;
    qint64 mainThreadWakeUps = 0;
};

ProcessUse useOf(qint64 processId) {
    ProcessUse use;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(processId));
    if (stat.open(QIODevice::ReadOnly)) {
        // Fields are counted after the program's name, which may contain spaces.
        const QList<QByteArray> fields = stat.readAll().split(')').last().simplified().split(' ');
        use.cpuSeconds
            = (fields.value(11).toDouble() + fields.value(12).toDouble()) / double(sysconf(_SC_CLK_TCK));
    }
    QFile status(QStringLiteral("/proc/%1/task/%1/status").arg(processId));
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("voluntary_ctxt_switches:"))
                use.mainThreadWakeUps = line.split(':').last().trimmed().toLongLong();
        }
    }
    return use;
}

void measureIdle(const RunningProgram &program) {
    constexpr double seconds = 10;
    const ProcessUse before = useOf(program.processId());
    pause(seconds);
    const ProcessUse after = useOf(program.processId());
    const double share = (after.cpuSeconds - before.cpuSeconds) / seconds;
    printRow("idle with warm capture, share of one core", QString::number(share * 100, 'f', 2) + " %",
        "under 1 %");
    printRow("idle, wake-ups of the main thread in 10 s",
        QString::number(after.mainThreadWakeUps - before.mainThreadWakeUps), "asleep");
}

struct Series {
    std::vector<double> keyDownToRecording;
    std::vector<double> keyUpToPaste;
    std::vector<double> whisperAlone;
};

Series measure(const DictationStage &stage, const HomeOptions &home, const QString &file, int count) {
    Series series;
    for (int run = 0; run < count; ++run) {
        const DictationReport report = dictate(stage, file);
        if (!report.keyDownToRecording || !report.keyUpToPaste || report.recordingPath.isEmpty()) {
            out() << "  a dictation failed: " << report.failure << Qt::endl;
            continue;
        }
        series.keyDownToRecording.push_back(*report.keyDownToRecording);
        series.keyUpToPaste.push_back(*report.keyUpToPaste);
        series.whisperAlone.push_back(secondsOfWhisperAlone(home, report.recordingPath));
    }
    return series;
}

void print(const Series &series) {
    const double alone = median(series.whisperAlone);
    const double work = median(series.keyUpToPaste) - pasteWait;
    const double limit = alone * 1.03 + 0.015;
    printRow(
        "key-down to recording, median", milliseconds(median(series.keyDownToRecording)), "at most 20 ms");
    printRow("key-up to posted paste, less the fixed 50 ms, median", milliseconds(work),
        "at most " + milliseconds(limit));
    printRow("whisper-cli alone with the same arguments, median", milliseconds(alone), "");
    printRow(
        "ratio", QString::number(work / alone, 'f', 3), "at most " + QString::number(limit / alone, 'f', 3));
}
} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures dictations of the real program.");
    parser.addHelpOption();
    addHomeOptions(parser);
    parser.addOption({ "runs", "dictations to do", "count", "20" });
    parser.addPositionalArgument("file", "WAV file to speak", "FILE.wav");
    parser.process(application);
    const HomeOptions home = homeOptions(parser);
    const QString file = parser.positionalArguments().value(0);

    VirtualUser user;
    RunningProgram program;
    Editor editor(user);
    if (!prepareHome(home) || !program.start(QCoreApplication::applicationDirPath() + "/tolmi")
        || !editor.open()) {
        out() << "the program or the editor did not start\n" << program.output() << Qt::endl;
        return 1;
    }
    dictate({ user, program, editor }, file);
    print(measure({ user, program, editor }, home, file, parser.value("runs").toInt()));
    measureIdle(program);
    return 0;
}
