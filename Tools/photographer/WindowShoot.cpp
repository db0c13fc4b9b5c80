#include "photographer/WindowShoot.h"

#include "dictate/Waiting.h"
#include "photographer/Camera.h"

#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>

namespace {
/// Seconds after which whatever slides, fades or loads in a window has come to rest.
constexpr double settling = 1.2;
constexpr double patience = 20;

struct WindowSize {
    QString name;
    QSize size;
};

constexpr QSize usualSize(1100, 700);
/// Middle of the button that leads to the next step, in a Studio of usual size and whatever the window
/// manager puts around it.
constexpr QPoint onwardInWizard(830, 595);

/// The window itself sees to it that it is not smaller than a workspace needs.
const WindowSize windowSizes[] { { "small", { 800, 560 } }, { "usual", usualSize },
    { "large", { 1600, 1000 } } };
constexpr QPoint studioPlace(150, 50);

/// In the order of their digits.
const QStringList workspaces { "commandCenter", "profile", "dictationLive", "history", "templates", "health",
    "settings" };

QString outputOf(const QStringList &arguments) {
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The inside of a window, which a command of xdotool prints.
QRect geometryOf(const QStringList &command) {
    const QString told = outputOf(command);
    const auto value = [&told](const QString &name) {
        return QRegularExpression(name + "=(-?\\d+)").match(told).captured(1).toInt();
    };
    return { value("X"), value("Y"), value("WIDTH"), value("HEIGHT") };
}

bool isStudioInFront() {
    return outputOf({ "getactivewindow", "getwindowname" }).trimmed() == u"Tolmi Studio";
}

/// The program's visible window whose width is between these; null when it has none.
QRect windowOfWidth(int least, int most) {
    const QString found = outputOf({ "search", "--onlyvisible", "--class", "^tolmi$" });
    for (const QString &window : found.split('\n', Qt::SkipEmptyParts)) {
        const QRect place = geometryOf({ "getwindowgeometry", "--shell", window });
        if (place.width() >= least && place.width() <= most)
            return place;
    }
    return {};
}

/// Presses a button if it is there.
void press(const AccessibleProgram &program, const char *name) {
    const auto button = program.find(QStringLiteral("push button"), QLatin1String(name), 1);
    if (button)
        button->act(QStringLiteral("Press"));
}

/// The program's sign in the tray.
QRect statusItem() {
    return windowOfWidth(10, 40);
}

/// With the shadow around it.
QRect popup() {
    return windowOfWidth(320, 500);
}
} // namespace

WindowShoot::WindowShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper)
    : m_options(options)
    , m_look(look)
    , m_wallpaper(wallpaper) { }

QStringList WindowShoot::run() {
    m_wallpaper.setScheme(m_look.scheme);
    QStringList missing = shootWizard();
    missing += shootDailyLife();
    return missing;
}

QStringList WindowShoot::shootWizard() {
    HomeOptions newUser = m_options.home;
    newUser.settings.insert("tolmi.onboarding.completed", false);
    if (!prepareExampleHome(m_look, newUser, m_options.samplesFolder))
        return { QStringLiteral("the home of the new user could not be prepared") };
    VirtualUser user;
    RunningProgram program;
    if (!program.start(m_options.program, {}) || !waitUntil(isStudioInFront, patience))
        return { QStringLiteral("the wizard did not open: ") + program.output() };
    user.pointAt(Place::nowhere);
    placeActiveWindow(QRect(studioPlace, usualSize));
    const AccessibleProgram windows(program.processId());
    QStringList missing;
    for (const char *step : { "profile", "permissions", "dictation" }) {
        pause(settling);
        missing += saveStudio(windows, QStringLiteral("wizard-") + step);
        // A window that is still busy with the pointer's coming misses a click.
        user.pointAt(studioPlace + onwardInWizard);
        pause(settling);
        user.click(studioPlace + onwardInWizard);
        pause(settling);
        user.pointAt(Place::nowhere);
    }
    return missing;
}

QStringList WindowShoot::shootDailyLife() {
    if (!prepareExampleHome(m_look, m_options.home, m_options.samplesFolder))
        return { QStringLiteral("the home could not be prepared") };
    VirtualUser user;
    RunningProgram program;
    if (!program.start(m_options.program))
        return { QStringLiteral("the program did not start: ") + program.output() };
    const AccessibleProgram windows(program.processId());
    QStringList missing = shootPopup(user);
    // A second start opens the Studio of the first.
    RunningProgram second;
    second.start(m_options.program, {});
    if (!waitUntil(isStudioInFront, patience))
        return missing + QStringList { QStringLiteral("the Studio did not open: ") + program.output() };
    missing += shootStudio(user, windows);
    missing += shootWork(user, program);
    return missing;
}

QStringList WindowShoot::shootWork(VirtualUser &user, RunningProgram &program) {
    const AccessibleProgram windows(program.processId());
    placeActiveWindow(QRect(studioPlace, usualSize));
    user.typeWithControl("5");
    pause(settling);
    press(windows, m_look.isRomanian() ? "Aplica sablon" : "Apply Template");
    pause(settling);
    QStringList missing = saveStudio(windows, QStringLiteral("studio-templates-applied"));

    user.typeWithControl("3");
    // The first dictation leaves its transcript for the picture of the second.
    for (const bool isPictured : { false, true }) {
        user.press(VirtualUser::rightAlt);
        waitUntil([&program] { return program.state() == u"recording"; }, patience);
        QProcess voice;
        voice.start(QStringLiteral("paplay"),
            { QStringLiteral("--device=") + qEnvironmentVariable("TOLMI_DESKTOP_MICFEED"),
                m_options.sample(m_look.isRomanian() ? "romanian-2" : "english-2") });
        // It is at its best then.
        pause(1.1);
        if (isPictured)
            missing += saveStudio(windows, QStringLiteral("studio-dictationLive-recording"));
        waitUntil([&voice] { return voice.state() == QProcess::NotRunning; }, patience);
        pause(0.2);
        user.release(VirtualUser::rightAlt);
        waitUntil([&program] { return program.state() == u"idle"; }, patience);
    }
    return missing;
}

QStringList WindowShoot::shootStudio(VirtualUser &user, const AccessibleProgram &program) {
    QStringList missing;
    user.pointAt(Place::nowhere);
    for (const WindowSize &size : windowSizes) {
        for (int index = 0; index < workspaces.size(); ++index) {
            user.typeWithControl(QByteArray::number(index + 1).constData());
            placeActiveWindow(QRect(studioPlace, size.size));
            pause(settling);
            missing += saveStudio(program, QStringLiteral("studio-") + workspaces[index] + u'-' + size.name);
        }
    }
    return missing;
}

QStringList WindowShoot::shootPopup(VirtualUser &user) {
    waitUntil([] { return !statusItem().isNull(); }, patience);
    user.click(statusItem().center());
    if (!waitUntil([] { return !popup().isNull(); }, patience))
        return { QStringLiteral("the popup did not open") };
    user.pointAt({ 20, 20 });
    pause(settling);
    const QStringList missing = save(popup(), QStringLiteral("popup"));
    user.type("Escape");
    return missing;
}

QStringList WindowShoot::saveStudio(const AccessibleProgram &program, const QString &subject) {
    const auto window = program.find(QStringLiteral("frame"), {});
    return window ? save(window->rectangle(), subject) : QStringList(subject);
}

QStringList WindowShoot::save(const QRect &place, const QString &subject) {
    const QString name = subject + u'-' + m_look.name() + QStringLiteral(".png");
    const bool isSaved = Camera::picture(place.intersected(QGuiApplication::primaryScreen()->geometry()))
                             .save(m_options.outputFolder + u'/' + name);
    return isSaved ? QStringList() : QStringList { name };
}
