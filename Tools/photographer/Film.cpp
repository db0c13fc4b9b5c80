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
/// Seconds before the key is pressed.
constexpr double lull = 0.8;
/// Hundredths of a second for which the text stands before the film begins anew.
constexpr int timeToRead = 200;

/// Pictures one after the other, each shown until the next one differs.
class Film {
public:
    void add(const QImage &picture) {
        if (m_frames.empty() || m_frames.back().picture != picture)
            m_frames.push_back({ picture });
        else
            ++m_frames.back().count;
    }

    /// What went wrong; empty when nothing did.
    QString write(const QString &path) const {
        QProcess join;
        join.setProcessChannelMode(QProcess::MergedChannels);
        // Dithering would be noise in every picture, and no picture would be like the one before it.
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

    /// Saves the pictures; what the joining program is told of them.
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
    // An editor with nothing in its window but the text; other editors come with bars, hints and warnings.
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
        // After the dictation the text is read back from the editor, which is no part of the story.
        if (!wasPressed || program.state() != u"idle")
            film.add(picture);
    });
    pause(lull);
    const QString failure = dictate({ user, program, editor },
        options.sample(look.isRomanian() ? QStringLiteral("romanian-2") : QStringLiteral("english-2")))
                                .failure;
    return failure.isEmpty() ? film.write(options.outputFolder + QStringLiteral("/dictation.gif")) : failure;
}
