#include "photographer/WindowShoot.h"

#include "desktop-driver/ProgramWindows.h"
#include "dictate/Waiting.h"
#include "photographer/Camera.h"

#include <QFile>
#include <QGuiApplication>
#include <QScreen>

namespace {
/// Seconds after which all animations and loading in a window have finished.
constexpr double settling = 1.2;
constexpr double patience = 20;

struct WindowSize {
    QString name;
    QSize size;
};

constexpr QSize usualSize(1100, 700);
/// The window enforces the minimum size of each workspace itself.
constexpr QSize smallSize(800, 560);
const WindowSize windowSizes[] { { "small", smallSize }, { "usual", usualSize },
    { "large", { 1600, 1000 } } };
constexpr QPoint studioPlace(150, 50);

/// A workspace or one of its tabs; the history is last, because it widens the window.
struct Scene {
    const char *name;
    /// Opens it together with Control.
    const char *digit;
    /// Index of the tab; negative for none.
    int tab = -1;
};

const Scene scenes[] { { "commandCenter", "1" }, { "profile", "2" }, { "dictationLive", "3" },
    { "templates", "5" }, { "health", "6" }, { "settings", "7" }, { "settings-engine", "7", 1 },
    { "settings-refinement", "7", 2 }, { "history", "4" } };

bool isStudioInFront() {
    return outputOf(QStringLiteral("xdotool"), { "getactivewindow", "getwindowname" }).trimmed()
        == u"Tolmi Studio";
}

void moveStudio(const QSize &size) {
    placeActiveWindow(QRect(studioPlace, size));
}

/// The program's tray icon.
QRect statusItem() {
    return ProgramWindows::ofWidth(10, 40);
}

bool forgetHistory() {
    return QFile::remove(dataFolder() + QStringLiteral("/history.json"));
}

/// The popup including its shadow.
QRect popup() {
    return ProgramWindows::ofWidth(320, 500);
}
} // namespace

WindowShoot::WindowShoot(const ShootOptions &options, const Look &look, Wallpaper &wallpaper)
    : m_options(options)
    , m_look(look)
    , m_wallpaper(wallpaper) { }

QStringList WindowShoot::run(const QString &only) {
    m_wallpaper.setScheme(m_look.scheme);
    QStringList missing;
    if (only.isEmpty() || only == u"wizard") {
        missing += shootWizard();
        missing += shootWizardInTrouble();
    }
    if (only.isEmpty() || only == u"windows")
        missing += shootDailyLife();
    return missing;
}

bool WindowShoot::openWizard(VirtualUser &user, RunningProgram &program, const QSize &size) {
    if (!program.start(m_options.program) || !waitUntil(isStudioInFront, patience))
        return false;
    user.pointAt(Place::nowhere);
    moveStudio(size);
    return true;
}

QStringList WindowShoot::shootWizard() {
    HomeOptions newUser = m_options.home;
    newUser.settings.insert("tolmi.onboarding.completed", false);
    if (!prepareExampleHome(m_look, newUser, m_options.samplesFolder) || !forgetHistory())
        return { QStringLiteral("the home of the new user could not be prepared") };
    VirtualUser user;
    RunningProgram program;
    if (!openWizard(user, program, usualSize))
        return { QStringLiteral("the wizard did not open: ") + program.output() };
    const Stage stage { user, AccessibleProgram(program.processId()) };
    QStringList missing;
    for (const char *step : { "profile", "permissions", "dictation" }) {
        missing += saveStudio(stage, QStringLiteral("wizard-") + step);
        if (qstrcmp(step, "dictation") != 0)
            missing += click(stage, "push button", word("Continue", "Continua"));
    }
    missing += click(stage, "push button", word("Skip for now", "Sari momentan"));
    return missing + shootScenes(stage, QStringLiteral("newcomer"));
}

QStringList WindowShoot::shootWizardInTrouble() {
    const QString nowhere = QStringLiteral("/nowhere/whisper");
    HomeOptions newUser = m_options.home;
    newUser.whisperCLI.clear();
    newUser.model = nowhere;
    newUser.settings = { { "tolmi.onboarding.completed", false },
        { "tolmi.onboarding.lastStep", "dictationTest" }, { "tolmi.whisperBinaryPath", nowhere } };
    // Otherwise the one installed for an earlier home would be found.
    QFile::remove(dataFolder() + QStringLiteral("/tools/whisper-cli"));
    if (!prepareExampleHome(m_look, newUser, m_options.samplesFolder))
        return { QStringLiteral("the home without a model could not be prepared") };
    VirtualUser user;
    RunningProgram program;
    if (!openWizard(user, program, smallSize))
        return { QStringLiteral("the wizard did not open: ") + program.output() };
    return saveStudio({ user, AccessibleProgram(program.processId()) }, QStringLiteral("wizard-trouble"));
}

QStringList WindowShoot::shootDailyLife() {
    if (!prepareExampleHome(m_look, m_options.home, m_options.samplesFolder))
        return { QStringLiteral("the home could not be prepared") };
    VirtualUser user;
    RunningProgram program;
    if (!program.start(m_options.program))
        return { QStringLiteral("the program did not start: ") + program.output() };
    QStringList missing = shootPopup(user);
    // A second start opens the Studio of the first.
    RunningProgram second;
    second.start(m_options.program);
    if (!waitUntil(isStudioInFront, patience))
        return missing + QStringList { QStringLiteral("the Studio did not open: ") + program.output() };
    user.pointAt(Place::nowhere);
    const Stage stage { user, AccessibleProgram(program.processId()) };
    for (const WindowSize &size : windowSizes) {
        // Leaves the history, which keeps the window wide.
        goTo(stage, scenes[0].digit);
        moveStudio(size.size);
        missing += shootScenes(stage, size.name);
    }
    moveStudio(usualSize);
    return missing + shootChoices(stage) + shootTemplate(stage) + shootDictation(stage, program);
}

QStringList WindowShoot::shootScenes(const Stage &stage, const QString &suffix) {
    QStringList missing;
    for (const Scene &scene : scenes) {
        goTo(stage, scene.digit);
        if (scene.tab >= 0)
            missing += click(stage, "page tab", {}, scene.tab);
        missing += saveStudio(stage, QStringLiteral("studio-") + scene.name + u'-' + suffix);
    }
    return missing;
}

QStringList WindowShoot::shootChoices(const Stage &stage) {
    goTo(stage, "7");
    QStringList missing = click(stage, "combo box", word("Transcription language", "Limba transcriere"));
    missing += saveStudio(stage, QStringLiteral("studio-settings-menu"));
    stage.user.type("Escape");
    goTo(stage, "4");
    missing += click(stage, "push button", word("Clear All", "Sterge tot"));
    missing += saveStudio(stage, QStringLiteral("studio-history-question"));
    stage.user.type("Escape");
    pause(settling);
    missing += click(stage, "list item", longestExample(m_look));
    stage.user.type("Delete");
    missing += saveStudio(stage, QStringLiteral("studio-history-undo"));
    stage.user.typeWithControl("z");
    return missing;
}

QStringList WindowShoot::shootTemplate(const Stage &stage) {
    goTo(stage, "4");
    QStringList missing = click(stage, "list item", longestExample(m_look));
    goTo(stage, "5");
    moveStudio(usualSize);
    missing += click(stage, "push button", word("Apply Template", "Aplica sablon"));
    return missing + saveStudio(stage, QStringLiteral("studio-templates-applied"));
}

QStringList WindowShoot::shootDictation(const Stage &stage, RunningProgram &program) {
    QStringList missing;
    goTo(stage, "3");
    moveStudio(usualSize);
    // The picture of the second dictation shows the first one's transcript.
    for (const bool isPictured : { false, true }) {
        stage.user.press(VirtualUser::rightAlt);
        waitUntil([&program] { return program.state() == u"recording"; }, patience);
        QProcess voice;
        voice.start(QStringLiteral("paplay"),
            { QStringLiteral("--device=") + qEnvironmentVariable("TOLMI_DESKTOP_MICFEED"),
                m_options.sample(m_look.isRomanian() ? "romanian-2" : "english-2") });
        // The voice is loud then.
        pause(1.1);
        if (isPictured)
            missing += saveStudioNow(stage, QStringLiteral("studio-dictationLive-recording"));
        waitUntil([&voice] { return voice.state() == QProcess::NotRunning; }, patience);
        pause(0.2);
        stage.user.release(VirtualUser::rightAlt);
        waitUntil([&program] { return program.state() == u"idle"; }, patience);
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

void WindowShoot::goTo(const Stage &stage, const char *digit) {
    stage.user.typeWithControl(digit);
    pause(0.3);
}

QStringList WindowShoot::click(const Stage &stage, const QString &role, const QString &name, int place) {
    std::vector<AccessibleElement> found;
    waitUntil(
        [&] {
            found.clear();
            for (const AccessibleElement &element : stage.windows.elements()) {
                if (element.role() == role && (name.isEmpty() || element.name() == name))
                    found.push_back(element);
            }
            return int(found.size()) > place;
        },
        patience);
    if (int(found.size()) <= place)
        return { QStringLiteral("there is no ") + role + u' ' + name };
    const QPoint middle = found[size_t(place)].rectangle().center();
    // A window that is still handling the pointer's entry misses a click.
    stage.user.pointAt(middle);
    pause(0.3);
    stage.user.click(middle);
    pause(0.3);
    stage.user.pointAt(Place::nowhere);
    return {};
}

QString WindowShoot::word(const char *english, const char *romanian) const {
    return QLatin1String(m_look.isRomanian() ? romanian : english);
}

QStringList WindowShoot::saveStudio(const Stage &stage, const QString &subject) {
    pause(settling);
    return saveStudioNow(stage, subject);
}

QStringList WindowShoot::saveStudioNow(const Stage &stage, const QString &subject) {
    const auto window = stage.windows.find(QStringLiteral("frame"), {});
    return window ? save(window->rectangle(), subject) : QStringList(subject);
}

QStringList WindowShoot::save(const QRect &place, const QString &subject) {
    const QString name = subject + u'-' + m_look.name() + QStringLiteral(".png");
    const bool isSaved = Camera::picture(place.intersected(QGuiApplication::primaryScreen()->geometry()))
                             .save(m_options.outputFolder + u'/' + name);
    return isSaved ? QStringList() : QStringList { name };
}
