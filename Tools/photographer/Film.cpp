#include "photographer/Film.h"

#include "dictate/Waiting.h"
#include "photographer/Camera.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <vector>

namespace {
constexpr QRect stageInFilm(560, 0, 800, 440);
constexpr QRect editorInFilm(640, 190, 640, 140);
constexpr QPoint keyInFilm(960, 404);
constexpr int widthOfFilm = 640;
constexpr int picturesPerSecond = 10;
/// Seconds shown before the key is pressed.
constexpr double lull = 0.8;
/// Hundredths of a second for which the text is shown before the film loops.
constexpr int timeToRead = 200;

/// A sequence of frames; equal ones are merged.
class Film {
public:
    void add(const QImage &picture) {
        if (m_frames.empty() || m_frames.back().picture != picture)
            m_frames.push_back({ picture });
        else
            ++m_frames.back().count;
    }

    /// Returns an error message, empty on success.
    QString write(const QString &path) const {
        QProcess join;
        join.setProcessChannelMode(QProcess::MergedChannels);
        // No dithering, whose noise would make all frames differ.
        join.start(QStringLiteral("convert"),
            QStringList { "-loop", "0" } + savedFrames()
                + QStringList { "+dither", "-colors", "96", "-layers", "optimize", path });
        constexpr int longEnough = 300'000;
        const bool isDone = join.waitForFinished(longEnough) && join.exitCode() == 0;
        return isDone ? QString()
                      : QStringLiteral("the film could not be joined: ") + join.readAllStandardOutput();
    }

private:
    struct Frame {
        QImage picture;
        int count = 1;
    };

    /// Saves the frames and returns the arguments for them.
    QStringList savedFrames() const {
        const QDir folder(qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/film"));
        folder.mkpath(QStringLiteral("."));
        QStringList arguments;
        for (const Frame &frame : m_frames) {
            const QString path = folder.filePath(QString::number(arguments.size()) + QStringLiteral(".png"));
            frame.picture.scaledToWidth(widthOfFilm, Qt::SmoothTransformation).save(path);
            const int rest = &frame == &m_frames.back() ? timeToRead : 0;
            arguments << "-delay" << QString::number(frame.count * 100 / picturesPerSecond + rest) << path;
        }
        return arguments;
    }

    std::vector<Frame> m_frames;
};
} // namespace

QString filmDictation(const ShootOptions &options, const Look &look, Wallpaper &wallpaper) {
    if (!prepareExampleHome(look, options.home, options.samplesFolder))
        return QStringLiteral("the home could not be prepared");
    wallpaper.setScheme(look.scheme);
    VirtualUser user;
    RunningProgram program;
    // An editor that shows only text, without menu bars, hints or warnings.
    Editor editor(user, QFileInfo(options.program).path() + QStringLiteral("/tolmi-notes"));
    if (!program.start(options.program) || !editor.open())
        return QStringLiteral("program or editor did not start: ") + program.output();
    user.pointAt(Place::nowhere);
    placeActiveWindow(editorInFilm);
    wallpaper.showKey(keyInFilm);
    editor.clear();

    Film film;
    const Camera camera(stageInFilm, picturesPerSecond, [&](const QImage &picture) {
        const bool wasPressed = user.timeOf(VirtualUser::rightAlt, true).has_value();
        wallpaper.setKeyDown(wasPressed && !user.timeOf(VirtualUser::rightAlt, false));
        // Stops before the text is read back from the editor.
        if (!wasPressed || program.state() != u"idle")
            film.add(picture);
    });
    pause(lull);
    const QString failure = dictate({ user, program, editor },
        options.sample(look.isRomanian() ? QStringLiteral("romanian-2") : QStringLiteral("english-2")))
                                .failure;
    return failure.isEmpty() ? film.write(options.outputFolder + QStringLiteral("/dictation.gif")) : failure;
}
