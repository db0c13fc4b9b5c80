// The real program, driven by other programs: by tolmictl, as key bindings and scripts call it, and over the
// bus.

#include "Desktop/TestPrograms.h"
#include "Support/Print.h"
#include "desktop-driver/AccessibleProgram.h"
#include "dictate/Dictation.h"
#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <csignal>
#include <ctime>
#include <iostream>
#include <random>

#include <unistd.h>

namespace {
constexpr double patience = 20;
const QString service = QStringLiteral("org.tolmi.Tolmi");
const QString tolmictl = QStringLiteral(TOLMI_TOLMICTL);

/// How a call of tolmictl ended.
struct Ended {
    int status = -1;
    QString output;
    QString errors;
};

Ended control(const QStringList &arguments) {
    QProcess process;
    process.start(tolmictl, arguments);
    process.waitForFinished(20000);
    return { process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
        QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

int controlStatus(const char *command) {
    return control({ QString::fromLatin1(command) }).status;
}

/// Another program on the bus, which presses the key and stays.
class Presser {
public:
    explicit Presser(const char *name)
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QString::fromLatin1(name))) { }
    ~Presser() { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void call(const char *method) const {
        m_bus.call(QDBusMessage::createMethodCall(service, QStringLiteral("/org/tolmi/Tolmi1"),
            QStringLiteral("org.tolmi.Tolmi1"), QString::fromLatin1(method)));
    }

private:
    QDBusConnection m_bus;
};

/// The words of a text; sound through the air may move the marks.
QString words(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("[.,?!]"))).simplified();
}

/// A field of /proc/PID/stat behind the name of the program, by its number in proc(5).
QByteArray processField(qint64 process, int number) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(number - 3);
}

/// In the unit in which the system tells when a process was started.
qint64 ticksSinceStart() {
    timespec now {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    const qint64 perSecond = sysconf(_SC_CLK_TCK);
    return now.tv_sec * perSecond + now.tv_nsec * perSecond / 1000000000;
}

class Control : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    /// The program with an engine that does what the script says.
    void start(const QByteArray &script) {
        const QString path = qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/script");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(script) == script.size());
        file.close();
        m_home.whisperCLI = QStringLiteral(TOLMI_SCRIPTED_WHISPER_CLI);
        m_home.model = path;
        m_home.settings.insert(QStringLiteral("tolmi.refinementEnabled"), false);
        start();
    }
    void start() {
        ASSERT_TRUE(prepareHome(m_home));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
    }

    bool comesTo(const char *state) {
        return waitUntil([&] { return m_program.state() == QLatin1String(state); }, patience);
    }
    bool isReached() const {
        return waitUntil([] { return controlStatus("status") == 0; }, patience);
    }
    qsizetype countOf(const char *state) const {
        return std::ranges::count_if(m_program.stages(),
            [&](const RunningProgram::Stage &stage) { return stage.detail == QLatin1String(state); });
    }

    HomeOptions m_home { .language = QStringLiteral("en") };
    VirtualUser m_user;
    RunningProgram m_program;
};

const QByteArray saysHello = "transcript Hello.\n";
} // namespace

TEST_F(Control, PastesTheSameTextAsTheKey) {
    const QString sample = QStringLiteral(TOLMI_SAMPLES_DIR "/english-1.wav");
    m_home.whisperCLI = QStringLiteral(TOLMI_TEST_WHISPER_CLI);
    m_home.model = QStringLiteral(TOLMI_STARTING_MODEL);
    start();
    Editor editor(m_user);
    ASSERT_TRUE(editor.open());
    const DictationReport byKey = dictate({ m_user, m_program, editor }, sample);
    ASSERT_NE(byKey.pasted, QString()) << byKey.failure.toStdString();
    editor.clear();
    EXPECT_EQ(controlStatus("press"), 0);
    ASSERT_TRUE(comesTo("recording"));
    ASSERT_TRUE(playIntoMicrophone(sample));
    EXPECT_EQ(m_program.state(), QStringLiteral("recording")) << "the press outlives tolmictl";
    EXPECT_EQ(controlStatus("release"), 0);
    ASSERT_TRUE(comesTo("idle"));
    EXPECT_EQ(words(editor.text()), words(byKey.pasted));
}

// The engine takes long enough for a key event that is late to come before the end of the dictation.
TEST_F(Control, SourcesInRandomOrderNeverDoubleOrStrandAPress) {
    start("sleep 300\ntranscript Hello.\n");
    TestEditor editor;
    ASSERT_TRUE(isReached());
    m_program.forgetStages();
    const Presser first("first");
    const Presser second("second");
    using Press = std::function<void(bool isDown)>;
    const std::vector<Press> sources { [this](bool isDown) {
                                          if (isDown)
                                              m_user.press(VirtualUser::rightAlt);
                                          else
                                              m_user.release(VirtualUser::rightAlt);
                                      },
        [](bool isDown) { controlStatus(isDown ? "press" : "release"); },
        [&](bool isDown) { first.call(isDown ? "Press" : "Release"); },
        [&](bool isDown) { second.call(isDown ? "Press" : "Release"); } };
    std::vector<bool> down(sources.size());
    std::mt19937 random(5);
    std::optional<size_t> holder;
    int presses = 0;
    qsizetype recordings = 0;
    while (presses < 200 || holder) {
        const size_t source = random() % sources.size();
        // Most of the presses are made while somebody holds the key.
        if (source == holder && presses < 200 && random() % 8 != 0)
            continue;
        down[source] = !down[source];
        sources[source](down[source]);
        presses += down[source];
        if (down[source] && !holder) {
            holder = source;
            ++recordings;
            ASSERT_TRUE(comesTo("recording")) << "press " << presses;
        } else if (!down[source] && holder == source) {
            holder.reset();
            ASSERT_TRUE(comesTo("idle")) << "press " << presses;
        }
        ASSERT_EQ(countOf("recording"), recordings) << "press " << presses;
    }
    EXPECT_EQ(countOf("transcribing"), recordings);
    EXPECT_EQ(historyEntries().size(), recordings);
    EXPECT_TRUE(editor.waitForText(QStringLiteral("Hello.").repeated(recordings)))
        << editor.text().toStdString();
    for (size_t source = 0; source < sources.size(); ++source) {
        if (down[source])
            sources[source](false);
    }
    std::cout << recordings << " recordings of " << presses << " presses\n";
}

TEST_F(Control, AProgramThatPressedAndEndedLetsGo) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    QProcess::execute(QStringLiteral("dbus-send"),
        { QStringLiteral("--session"), QStringLiteral("--type=method_call"),
            QStringLiteral("--dest=") + service, QStringLiteral("/org/tolmi/Tolmi1"),
            QStringLiteral("org.tolmi.Tolmi1.Press") });
    EXPECT_TRUE(waitUntil([this] { return countOf("transcribing") == 1; }, patience));
    EXPECT_TRUE(comesTo("idle"));
    EXPECT_EQ(controlStatus("press"), 0) << "nobody holds the key any more";
    EXPECT_TRUE(comesTo("recording"));
    EXPECT_EQ(controlStatus("release"), 0);
}

TEST_F(Control, AReleaseThatOvertakesItsPressEndsIt) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    QProcess late;
    late.start(QStringLiteral("bash"),
        { QStringLiteral("-c"), QStringLiteral("kill -STOP $$; exec \"$0\" press"), tolmictl });
    ASSERT_TRUE(waitUntil([&] { return processField(late.processId(), 3) == "T"; }, patience));
    const qint64 lateStart = processField(late.processId(), 22).toLongLong();
    ASSERT_TRUE(waitUntil([&] { return ticksSinceStart() > lateStart; }, patience));
    EXPECT_EQ(controlStatus("release"), 0);
    kill(pid_t(late.processId()), SIGCONT);
    ASSERT_TRUE(waitUntil([&] { return late.state() == QProcess::NotRunning; }, patience));
    EXPECT_EQ(late.exitCode(), 0);
    EXPECT_EQ(controlStatus("start"), 0) << "nobody holds the key";
    ASSERT_TRUE(comesTo("recording"));
    EXPECT_EQ(controlStatus("stop"), 0);
    ASSERT_TRUE(comesTo("idle"));
    EXPECT_EQ(countOf("recording"), 1);
}

TEST_F(Control, StartStopAndToggle) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    const std::vector<std::pair<const char *, const char *>> pairs { { "start", "stop" },
        { "toggle", "toggle" }, { "start", "toggle" }, { "press", "stop" } };
    for (const auto &[begin, end] : pairs) {
        SCOPED_TRACE(begin);
        EXPECT_EQ(controlStatus(begin), 0);
        ASSERT_TRUE(comesTo("recording"));
        EXPECT_EQ(controlStatus("start"), QLatin1String(begin) == QLatin1String("press") ? 1 : 0);
        EXPECT_EQ(controlStatus(end), 0);
        ASSERT_TRUE(comesTo("idle"));
    }
    EXPECT_EQ(countOf("recording"), qsizetype(pairs.size()));
}

TEST_F(Control, ARefusalHasItsReason) {
    start("sleep 2000\ntranscript Hello.\n");
    ASSERT_TRUE(isReached());
    ASSERT_EQ(controlStatus("start"), 0);
    ASSERT_TRUE(comesTo("recording"));
    ASSERT_EQ(controlStatus("stop"), 0);
    ASSERT_TRUE(comesTo("transcribing"));
    const Ended refused = control({ QStringLiteral("press") });
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, QStringLiteral("tolmictl: The last dictation is not over yet.\n"));
    EXPECT_EQ(refused.output, QString());
    EXPECT_TRUE(comesTo("idle"));
}

TEST_F(Control, StatusFollowsUntilTheEnd) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    QProcess lines;
    QProcess json;
    lines.start(tolmictl, { QStringLiteral("status"), QStringLiteral("--follow") });
    json.start(tolmictl, { QStringLiteral("status"), QStringLiteral("--json"), QStringLiteral("--follow") });
    QByteArray text;
    QByteArray objects;
    const auto hasLines = [&](qsizetype count) {
        text += lines.readAllStandardOutput();
        objects += json.readAllStandardOutput();
        return text.count('\n') == count && objects.count('\n') == count;
    };
    ASSERT_TRUE(waitUntil([&] { return hasLines(1); }, patience));
    EXPECT_EQ(controlStatus("press"), 0);
    ASSERT_TRUE(comesTo("recording"));
    EXPECT_EQ(controlStatus("release"), 0);
    EXPECT_TRUE(waitUntil([&] { return hasLines(6); }, patience)) << text.toStdString();
    EXPECT_EQ(text, QByteArray("idle\nrecording\ntranscribing\npasting\ndone\nidle\n"));
    for (const QByteArray &line : objects.trimmed().split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        EXPECT_TRUE(text.contains(object[QStringLiteral("state")].toString().toUtf8() + '\n'))
            << line.toStdString();
        EXPECT_EQ(object[QStringLiteral("version")].toString(), QStringLiteral(TOLMI_VERSION));
    }
    EXPECT_EQ(controlStatus("quit"), 0);
    for (QProcess *process : { &lines, &json }) {
        ASSERT_TRUE(waitUntil([&] { return process->state() == QProcess::NotRunning; }, patience));
        EXPECT_EQ(process->exitCode(), 3);
    }
}

TEST_F(Control, QuitEndsTheProgram) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    EXPECT_EQ(controlStatus("quit"), 0);
    EXPECT_TRUE(waitUntil([this] { return !m_program.isRunning(); }, patience));
    const Ended late = control({ QStringLiteral("press") });
    EXPECT_EQ(late.status, 3);
    EXPECT_EQ(late.errors, QStringLiteral("tolmictl: Tolmi is not running.\n"));
}

TEST_F(Control, OpensTheStudioAndTheSettings) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    const AccessibleProgram windows(m_program.processId());
    EXPECT_EQ(controlStatus("studio"), 0);
    EXPECT_TRUE(windows.find(QStringLiteral("list item"), QStringLiteral("Settings"), patience))
        << windows.described().toStdString();
    EXPECT_FALSE(windows.find(QStringLiteral("page tab"), QStringLiteral("Engine"), 0));
    EXPECT_EQ(controlStatus("settings"), 0);
    EXPECT_TRUE(windows.find(QStringLiteral("page tab"), QStringLiteral("Engine"), patience))
        << windows.described().toStdString();
}

TEST_F(Control, TheDoctorTellsHowEverythingIsDone) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    const Ended doctor = control({ QStringLiteral("doctor") });
    EXPECT_EQ(doctor.status, 0);
    for (const char *row : { "key: raw keys of the X server\n", "paste: ", "clipboard: ", "overlay: ",
             "microphone: Granted\n", "whisper-cli: Binary found\n", "model: Model found\n" })
        EXPECT_TRUE(doctor.output.contains(QLatin1String(row))) << row << doctor.output.toStdString();
}

TEST_F(Control, NothingThatWhisperCLIPrintedIsGivenOut) {
    start("print stdout my secret words\nexit 3\n");
    ASSERT_TRUE(isReached());
    ASSERT_EQ(controlStatus("start"), 0);
    ASSERT_TRUE(comesTo("recording"));
    ASSERT_EQ(controlStatus("stop"), 0);
    ASSERT_TRUE(comesTo("error"));
    EXPECT_EQ(control({ QStringLiteral("status") }).output,
        QStringLiteral("error: whisper-cli failed with exit code 3.\n"));
    EXPECT_FALSE(control({ QStringLiteral("status"), QStringLiteral("--json") })
                     .output.contains(QLatin1String("secret")));
}

TEST_F(Control, ALaterStartLeavesTheNameToTheFirst) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    QDBusConnectionInterface &bus = *QDBusConnection::sessionBus().interface();
    EXPECT_EQ(QProcess::execute(QStringLiteral(TOLMI_PROGRAM), {}), 0);
    EXPECT_EQ(bus.servicePid(service).value(), uint(m_program.processId()));
    EXPECT_TRUE(m_program.isRunning());
}

TEST_F(Control, WithTheNameTakenTheProgramWorksAndTakesItOverLater) {
    QDBusConnection squatter
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("squatter"));
    ASSERT_TRUE(squatter.registerService(service));
    start(saysHello);
    EXPECT_TRUE(waitUntil(
        [this] { return m_program.output().contains(QLatin1String("tolmictl will not work before")); },
        patience));
    EXPECT_EQ(controlStatus("status"), 1) << "what has the name knows no status";
    m_user.press(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("recording"));
    m_user.release(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("idle"));
    ASSERT_TRUE(squatter.unregisterService(service));
    EXPECT_TRUE(isReached());
}

TEST_F(Control, WithoutABusTheProgramWorks) {
    m_program.setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere"));
    start(saysHello);
    EXPECT_TRUE(m_program.output().contains(
        QLatin1String("Tolmi: tolmictl will not work: there is no session bus\n")))
        << m_program.output().toStdString();
    m_user.press(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("recording"));
    m_user.release(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("idle"));
    EXPECT_EQ(historyEntries().size(), 1);
}

TEST_F(Control, ABusThatHangsHoldsNothingUp) {
    start(saysHello);
    ASSERT_TRUE(isReached());
    const auto bus = pid_t(QDBusConnection::sessionBus()
                               .interface()
                               ->servicePid(QStringLiteral("org.freedesktop.DBus"))
                               .value());
    ASSERT_GT(bus, 0);
    ASSERT_EQ(kill(bus, SIGSTOP), 0);
    const auto resuming = qScopeGuard([bus] { kill(bus, SIGCONT); });
    m_user.press(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("recording"));
    m_user.release(VirtualUser::rightAlt);
    EXPECT_TRUE(comesTo("idle"));
    EXPECT_EQ(historyEntries().size(), 1);
    kill(bus, SIGCONT);
    EXPECT_TRUE(isReached());
}
