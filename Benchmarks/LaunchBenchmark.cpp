// Start-up cost of the program on the current desktop: time until the hotkey listens, idle memory, and time
// until the Studio is shown compared with an empty window.

#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

namespace {
constexpr double settlingSeconds = 3;

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A value of /proc/PID/status, which is in KiB, in MB.
double megabytes(qint64 processId, const QByteArray &name) {
    QFile file(QStringLiteral("/proc/%1/status").arg(processId));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith(name + ':'))
                return line.mid(name.size() + 1).simplified().split(' ').value(0).toDouble() * 1024 / 1e6;
        }
    }
    return 0;
}

/// CPU time of the main thread, which depends less on the machine's load than wall-clock time.
double mainThreadSeconds(qint64 processId) {
    QFile file(QStringLiteral("/proc/%1/schedstat").arg(processId));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(0).toDouble() / 1e9 : 0;
}

/// A program whose starts are measured until it prints a certain line.
struct Launch {
    QString path;
    QStringList arguments;
    QByteArray line;
};

/// Seconds from process start until the line; absent if it does not appear.
std::optional<double> start(QProcess &process, const Launch &launch) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tolmi.stages.info=true"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer since;
    since.start();
    process.start(launch.path, launch.arguments);
    while (process.canReadLine() || process.waitForReadyRead(20000)) {
        const double seconds = double(since.nsecsElapsed()) / 1e9;
        while (process.canReadLine()) {
            if (process.readLine().startsWith(launch.line))
                return seconds;
        }
    }
    return std::nullopt;
}

void end(QProcess &process) {
    process.terminate();
    if (!process.waitForFinished(5000))
        process.kill();
    process.waitForFinished(5000);
}

struct Series {
    std::vector<double> seconds;
    std::vector<double> mainThreadSeconds;
    std::vector<double> residentMegabytes;
    std::vector<double> anonymousMegabytes;
};

void measureOnce(const Launch &launch, double pauseSeconds, Series &series) {
    QProcess process;
    const std::optional<double> seconds = start(process, launch);
    if (!seconds) {
        std::printf("%s did not say \"%s\"\n", qPrintable(launch.path), launch.line.constData());
        end(process);
        std::exit(1);
    }
    series.mainThreadSeconds.push_back(mainThreadSeconds(process.processId()));
    pause(pauseSeconds);
    series.seconds.push_back(*seconds);
    series.residentMegabytes.push_back(megabytes(process.processId(), "VmRSS"));
    series.anonymousMegabytes.push_back(megabytes(process.processId(), "RssAnon"));
    end(process);
}

Series measure(const Launch &launch, int count, double pauseSeconds) {
    // The first start fills the page cache.
    Series discarded;
    measureOnce(launch, 0, discarded);
    Series series;
    for (int index = 0; index < count; ++index)
        measureOnce(launch, pauseSeconds, series);
    return series;
}

void printTime(const char *what, const Series &series, const char *goal) {
    const auto [fastest, slowest] = std::minmax_element(series.seconds.begin(), series.seconds.end());
    std::printf("  %-40s %6.0f ms   %s (%.0f to %.0f; %.0f on a processor)\n", what,
        1000 * median(series.seconds), goal, 1000 * *fastest, 1000 * *slowest,
        1000 * median(series.mainThreadSeconds));
}

/// The baseline for the Studio's start.
int showEmptyWindow(QGuiApplication &application) {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 1100; height: 700; visible: true }", QUrl());
    const std::unique_ptr<QObject> window(component.create());
    QObject::connect(qobject_cast<QQuickWindow *>(window.get()), &QQuickWindow::frameSwapped, &application,
        [] { std::fprintf(stderr, "frame\n"); });
    return QGuiApplication::exec();
}
} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures starts of Tolmi on this desktop."));
    parser.addHelpOption();
    addHomeOptions(parser);
    const QCommandLineOption starts(QStringLiteral("starts"), QStringLiteral("How often each is started."),
        QStringLiteral("count"), QStringLiteral("11"));
    const QCommandLineOption emptyWindow(
        QStringLiteral("empty-window"), QStringLiteral("Shows an empty window until it is ended."));
    parser.addOptions({ starts, emptyWindow });
    parser.process(application);
    if (parser.isSet(emptyWindow))
        return showEmptyWindow(application);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (!prepareHome(homeOptions(parser)))
        return 1;
    const int count = std::max(1, parser.value(starts).toInt());
    const QString tolmi = QGuiApplication::applicationDirPath() + QStringLiteral("/tolmi");
    const Series tray = measure({ tolmi, {}, "tolmi.stages: ready" }, count, settlingSeconds);
    std::printf("Medians of %d starts\n", count);
    printTime("in the tray, to hotkey ready", tray, "at most 150 ms");
    std::printf("  %-40s %6.1f MB   at most 45 MB (%.1f of it its own)\n", "in the tray, resident memory",
        median(tray.residentMegabytes), median(tray.anonymousMegabytes));
    const Series empty = measure(
        { QGuiApplication::applicationFilePath(), { QStringLiteral("--empty-window") }, "frame" }, count, 0);
    // For a new user the Studio opens by itself.
    HomeOptions newUser = homeOptions(parser);
    newUser.settings.insert(QStringLiteral("tolmi.onboarding.completed"), false);
    if (!prepareHome(newUser))
        return 1;
    const Series studio = measure({ tolmi, {}, "tolmi.stages: studio" }, count, 0);
    printTime("empty QML window, to its first frame", empty, "");
    printTime("Studio, to its first frame", studio, "");
    std::printf("  %-40s %6.2f      at most 2\n", "Studio / empty window",
        median(studio.seconds) / median(empty.seconds));
    return 0;
}
