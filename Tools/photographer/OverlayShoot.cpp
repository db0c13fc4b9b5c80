#include "photographer/OverlayShoot.h"

#include "dictate/Waiting.h"
#include "photographer/Camera.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>

OverlayShoot::OverlayShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper)
    : m_options(options)
    , m_look(look)
    , m_wallpaper(wallpaper) { }

QStringList OverlayShoot::run() {
    // An Ollama that does not answer, so that the refining state lasts long enough for a picture.
    QTcpServer silentOllama;
    silentOllama.listen(QHostAddress::LocalHost);
    ShootOptions options = m_options;
    options.home.model = modelPath();
    options.home.settings
        = { { "tolmi.ollamaEndpoint", QStringLiteral("http://127.0.0.1:%1").arg(silentOllama.serverPort()) },
              { "tolmi.ollamaTimeout", 1.5 }, { "tolmi.performanceMode", "maxQuality" } };
    QFile::remove(modelPath());
    QFile::link(m_options.home.model, modelPath());
    if (!prepareExampleHome(m_look, options.home, options.samplesFolder))
        return { QStringLiteral("the home could not be prepared") };
    m_wallpaper.setScheme(m_look.scheme);

    VirtualUser user;
    RunningProgram program;
    Editor editor(user);
    if (!program.start(options.program) || !editor.open())
        return { QStringLiteral("program or editor did not start: ") + program.output() };
    placeActiveWindow({ 560, 420, 800, 300 });
    const DictationStage stage { user, program, editor };

    user.pointAt(Place::nowhere);
    dictateAndWatch(stage, options.sample(m_look.isRomanian() ? "romanian-2" : "english-2"));
    // Without "pasting", which blocks the program and ends before a frame is drawn.
    QStringList missing = save({ "recording", "transcribing", "refining", "done" });
    user.pointAt(Place::onOverlay);
    dictateAndWatch(stage, quietRecording());
    missing += save({ "optimizingquality" });
    QFile::remove(modelPath());
    dictateAndWatch(stage, options.sample("english-1"));
    return missing + save({ "error" });
}

void OverlayShoot::dictateAndWatch(const DictationStage &stage, const QString &wavPath) {
    // Seconds at which the voice is loud; the end is silent.
    constexpr double talking = 1.2;
    m_pictures.clear();
    const Camera camera(Place::overlay, 25, [&](const QImage &picture) {
        const auto recording = stage.program.firstStage("state", "recording");
        const bool isQuietAgain = stage.program.state() == u"recording" && recording
            && stage.program.clock() > recording->seconds + talking;
        if (!isQuietAgain)
            m_pictures[stage.program.state()] = picture;
    });
    dictate(stage, wavPath);
}

QStringList OverlayShoot::save(const QStringList &states) {
    QStringList missing;
    for (const QString &state : states) {
        const QString name
            = QStringLiteral("overlay-") + state + u'-' + m_look.name() + QStringLiteral(".png");
        if (!m_pictures.value(state).save(m_options.outputFolder + u'/' + name))
            missing.append(name);
    }
    return missing;
}

QString OverlayShoot::modelPath() const {
    return qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/model.bin");
}

QString OverlayShoot::quietRecording() const {
    const QString path = qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/quiet.wav");
    QProcess::execute(QStringLiteral("sox"),
        { QStringLiteral("-v"), QStringLiteral("0.02"), m_options.sample("english-1"), path });
    return path;
}

void placeActiveWindow(const QRect &place) {
    QProcess::execute(QStringLiteral("xdotool"),
        { QStringLiteral("getactivewindow"), QStringLiteral("windowsize"), QStringLiteral("--sync"),
            QString::number(place.width()), QString::number(place.height()), QStringLiteral("windowmove"),
            QString::number(place.x()), QString::number(place.y()) });
    pause(0.5);
}
