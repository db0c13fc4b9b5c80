#include "photographer/Film.h"

#include "dictate/Waiting.h"
#include "photographer/Camera.h"

#include <QDir>
#include <QProcess>

namespace {
constexpr QRect stageInFilm(560, 0, 800, 420);
constexpr QRect editorInFilm(640, 190, 640, 150);
constexpr QPoint keyInFilm(960, 384);
constexpr int picturesPerSecond = 10;
/// Seconds before the key is pressed and after the overlay has gone.
constexpr double lull = 0.8;

QString join(const QDir &pictures, const QString &path) {
    QProcess join;
    join.setProcessChannelMode(QProcess::MergedChannels);
    // Dithering would be noise in every picture, and no picture would be like the one before it.
    join.start(QStringLiteral("convert"),
        { QStringLiteral("-delay"), QString::number(100 / picturesPerSecond), QStringLiteral("-loop"),
            QStringLiteral("0"), pictures.filePath(QStringLiteral("*.png")), QStringLiteral("+dither"),
            QStringLiteral("-colors"), QStringLiteral("96"), QStringLiteral("-layers"),
            QStringLiteral("optimize"), path });
    constexpr int longEnough = 300'000;
    const bool isDone = join.waitForFinished(longEnough) && join.exitCode() == 0;
    return isDone ? QString()
                  : QStringLiteral("the film could not be joined: ") + join.readAllStandardOutput();
}
} // namespace

QString filmDictation(const ShootOptions &options, const Look &look, Wallpaper &wallpaper) {
    if (!prepareExampleHome(look, options.home, options.samplesFolder))
        return QStringLiteral("the home could not be prepared");
    wallpaper.setScheme(look.scheme);
    VirtualUser user;
    RunningProgram program;
    Editor editor(user);
    if (!program.start(options.program) || !editor.open())
        return QStringLiteral("program or editor did not start: ") + program.output();
    user.pointAt(Place::nowhere);
    placeActiveWindow(editorInFilm);
    wallpaper.showKey(keyInFilm);

    const QDir pictures(qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/film"));
    pictures.mkpath(QStringLiteral("."));
    int count = 0;
    DictationReport report;
    {
        const Camera camera(stageInFilm, picturesPerSecond, [&](const QImage &picture) {
            picture.save(pictures.filePath(QStringLiteral("%1.png").arg(count++, 5, 10, QLatin1Char('0'))),
                nullptr, 80);
        });
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            const bool wasPressed = user.timeOf(VirtualUser::rightAlt, true).has_value();
            wallpaper.setKeyDown(wasPressed && !user.timeOf(VirtualUser::rightAlt, false));
        });
        watch.start(20);
        pause(lull);
        report = dictate({ user, program, editor },
            options.sample(look.isRomanian() ? QStringLiteral("romanian-2") : QStringLiteral("english-2")));
        pause(lull);
    }
    if (!report.failure.isEmpty())
        return report.failure;
    return join(pictures, options.outputFolder + QStringLiteral("/dictation.gif"));
}
