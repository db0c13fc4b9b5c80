// Whole dictations of the real program: a physical key press, real sound into the microphone, the real
// whisper-cli, and the text read back from the editor window that received it.

#include "dictate/Dictation.h"
#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include "Support/MisbehavingServer.h"
#include "Support/Print.h"
#include "Support/UsualOllamaPort.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <limits>

namespace {
QString sample(const QString &name) {
    return QStringLiteral(TOLMI_SAMPLES_DIR) + u'/' + name + QStringLiteral(".wav");
}

// The words of a text. Sound that went through the air, even a virtual one, may move a small model to another
// mark.
QString words(QString text) {
    return text.remove(QRegularExpression("[.,?!]")).simplified();
}

QString textIn(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QString wordsOfSample(const QString &name) {
    return words(textIn(QStringLiteral(TOLMI_SAMPLES_DIR) + u'/' + name + QStringLiteral(".txt")));
}

QStringList statesOf(const DictationReport &report) {
    QStringList names;
    for (const auto &[name, time] : report.states)
        names.append(name);
    return names;
}

QByteArray outputOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(5000);
    return process.readAllStandardOutput();
}

bool isStudioActive() {
    return outputOf("xdotool", { "getactivewindow", "getwindowname" }) == "Tolmi Studio\n";
}

// A program whose window has gone has heard of everything before, of its focus too.
bool closeStudio() {
    if (!waitUntil(isStudioActive, 20))
        return false;
    outputOf("wmctrl", { "-c", "Tolmi Studio" });
    return waitUntil(
        [] {
            return outputOf("xdotool", { "search", "--onlyvisible", "--name", "^Tolmi Studio$" }).isEmpty();
        },
        20);
}

// The window grows for the history, which tells that the program has got the key. A program that is still
// busy with opening its window would take being active for news when the user is long in another one. Keys
// that come before the program has heard of its focus go nowhere.
bool goesToTheHistory(VirtualUser &user) {
    if (!waitUntil(isStudioActive, 20))
        return false;
    return waitUntil(
        [&user] {
            user.typeWithControl("4");
            return outputOf("xdotool", { "getactivewindow", "getwindowgeometry" }).contains("1140x");
        },
        20);
}

int runTool(const QString &program, const QStringList &arguments) {
    return QProcess::execute(program, arguments);
}

// Frames that the header of a WAV file of mono floats promises.
qint64 framesInHeader(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const qsizetype data = bytes.indexOf("data");
    return data < 0 ? -1 : qFromLittleEndian<quint32>(bytes.constData() + data + 4) / sizeof(float);
}

// Links `program` under a name that writes every call into `log` first.
bool linkWithLog(const QString &program, const QString &name, const QString &log) {
    QFile file(name);
    const bool isWritten = file.open(QIODevice::WriteOnly)
        && file.write(QStringLiteral("#!/bin/bash\necho \"$*\" >>'%1'\nexec '%2' \"$@\"\n")
                          .arg(log, program)
                          .toUtf8())
            > 0;
    return isWritten && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Those of the files and folders that somebody else may read, write or enter; one that is missing counts too.
QStringList openToOthers(const QStringList &paths) {
    QStringList open;
    for (const QString &path : paths) {
        if (!QFileInfo::exists(path) || (QFile::permissions(path) & QFile::Permissions::fromInt(0x0077)))
            open.append(path);
    }
    return open;
}

QStringList withFiles(const QString &folder) {
    QStringList paths { folder };
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files))
        paths.append(file.filePath());
    return paths;
}

const QStringList statesOfASuccess { "recording", "transcribing", "refining", "pasting", "done", "idle" };
const QStringList statesOfAFailure { "recording", "transcribing", "error", "idle" };
} // namespace

class WholeDictation : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_TRUE(m_program.quit()) << "the program did not end when it was asked to";
    }

    void start() {
        ASSERT_TRUE(prepareHome(m_home));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
        ASSERT_TRUE(m_editor.open());
    }

    DictationReport speak(const QString &name) {
        return dictate({ m_user, m_program, m_editor }, sample(name));
    }

    // A recording that sox makes of `input` with `effects`.
    static QString made(const QString &name, const QStringList &input, const QStringList &effects) {
        const QString path = qEnvironmentVariable("TOLMI_DESKTOP_DIR") + '/' + name;
        EXPECT_EQ(runTool("sox", input + QStringList { path } + effects), 0);
        return path;
    }

    HomeOptions m_home { .whisperCLI = QStringLiteral(TOLMI_TEST_WHISPER_CLI),
        .model = QStringLiteral(TOLMI_STARTING_MODEL) };
    VirtualUser m_user;
    RunningProgram m_program;
    Editor m_editor { m_user };
};

TEST_F(WholeDictation, EnglishStandsInTheEditorAndTheClipboardIsTheUsersAgain) {
    start();
    const DictationReport report = speak("english-2");
    EXPECT_EQ(report.failure, QString());
    EXPECT_EQ(statesOf(report), statesOfASuccess);
    EXPECT_EQ(words(report.pasted), wordsOfSample("english-2"));
    EXPECT_TRUE(report.isClipboardRestored);
    EXPECT_TRUE(QFileInfo::exists(report.recordingPath));
}

TEST_F(WholeDictation, OneFollowsTheOther) {
    start();
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    EXPECT_EQ(words(speak("romanian-2").pasted), wordsOfSample("romanian-2"));
}

// On this layout the key is the one that types letters together with others.
TEST_F(WholeDictation, RomanianOnTheRomanianKeyboard) {
    ASSERT_EQ(runTool("setxkbmap", { "ro" }), 0);
    m_home.language = "ro";
    start();
    const DictationReport report = speak("romanian-2");
    EXPECT_EQ(report.failure, QString());
    EXPECT_EQ(words(report.pasted), wordsOfSample("romanian-2"));
}

// On the first layout the key is an Alt that is reported at once, on the second it types letters.
TEST_F(WholeDictation, AKeyThatJoinsThePressDiscardsTheRecording) {
    start();
    for (const auto *layout : { "us", "ro" }) {
        SCOPED_TRACE(layout);
        ASSERT_EQ(runTool("setxkbmap", { layout }), 0);
        m_program.forgetStages();
        // Pressed and typed by one process, since the second between them is short on a busy machine.
        ASSERT_EQ(runTool("xdotool", { "keydown", "108", "sleep", "0.5", "key", "38" }), 0);
        EXPECT_TRUE(waitUntil([this] { return m_program.firstStage("state", "idle").has_value(); }, 20));
        m_user.release(VirtualUser::rightAlt);
        EXPECT_TRUE(m_program.firstStage("state", "recording"));
        EXPECT_TRUE(waitUntil([] { return keptRecordings().isEmpty(); }, 20));
        const DictationReport report = speak("english-2");
        EXPECT_EQ(statesOf(report), statesOfASuccess);
        EXPECT_EQ(words(report.pasted), wordsOfSample("english-2"));
        for (const QString &path : keptRecordings())
            EXPECT_TRUE(QFile::remove(path));
    }
    EXPECT_EQ(historyEntries().size(), 2);
}

TEST_F(WholeDictation, MissingModelEndsInAnErrorThatPasses) {
    m_home.model = "/nowhere/ggml-missing.bin";
    start();
    const DictationReport report = speak("english-1");
    EXPECT_EQ(statesOf(report), statesOfAFailure);
    EXPECT_EQ(report.pasted, QString());
    EXPECT_TRUE(report.isClipboardRestored);
    EXPECT_TRUE(QFileInfo::exists(report.recordingPath)) << "the recording of a failed dictation is kept";
}

TEST_F(WholeDictation, MissingProgramEndsInAnErrorThatPasses) {
    m_home.whisperCLI = QString();
    start();
    const DictationReport report = speak("english-1");
    EXPECT_EQ(statesOf(report), statesOfAFailure);
    EXPECT_EQ(report.pasted, QString());
}

TEST_F(WholeDictation, MissingSoundServerEndsInAnErrorThatPasses) {
    start();
    ASSERT_EQ(runTool("pactl", { "exit" }), 0);
    // The server says goodbye before it goes.
    ASSERT_TRUE(waitUntil([] { return runTool("pactl", { "info" }) != 0; }, 20));
    m_program.forgetStages();
    m_user.press(VirtualUser::rightAlt);
    EXPECT_TRUE(waitUntil([this] { return m_program.state() == u"error"; }, 20));
    m_user.release(VirtualUser::rightAlt);
    EXPECT_TRUE(waitUntil([this] { return m_program.state() == u"idle"; }, 20));
    EXPECT_FALSE(m_program.firstStage("state", "recording"));
}

TEST_F(WholeDictation, KilledInMidRecordingLeavesAReadableFileAndStartsAgain) {
    start();
    m_user.press(VirtualUser::rightAlt);
    ASSERT_TRUE(waitUntil([this] { return m_program.state() == u"recording"; }, 20));
    ASSERT_TRUE(playIntoMicrophone(sample("english-1")));
    m_program.kill();
    m_user.release(VirtualUser::rightAlt);
    ASSERT_EQ(keptRecordings().size(), 1);
    EXPECT_GT(framesInHeader(keptRecordings().first()), 48000);

    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM)));
    EXPECT_EQ(words(speak("english-2").pasted), wordsOfSample("english-2"));
}

TEST_F(WholeDictation, BrokenSettingsAreSetAsideAndTheStartingModelServes) {
    const UsualOllamaPort port;
    if (!port.isHeld())
        GTEST_SKIP() << "something listens at Ollama's port, and this dictation would go there";
    ASSERT_TRUE(prepareHome(m_home));
    QFile file(settingsPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{ \"tolmi.language\": ");
    file.close();
    // A first start as far as the program can tell, which shows the wizard.
    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM)));
    ASSERT_TRUE(closeStudio());
    ASSERT_TRUE(m_editor.open());
    EXPECT_EQ(words(speak("romanian-2").pasted), wordsOfSample("romanian-2"))
        << "Romanian is the language of a first start";
    const QDir folder = QFileInfo(settingsPath()).dir();
    EXPECT_EQ(folder.entryList({ "settings.json.unreadable-*" }).size(), 1);
}

TEST_F(WholeDictation, AModelThatWasInstalledSinceServesFromTheNextStart) {
    const QString folder = qEnvironmentVariable("TOLMI_DESKTOP_DIR");
    const QString log = folder + QStringLiteral("/calls");
    const QString model = dataFolder() + QStringLiteral("/models/ggml-base.bin");
    ASSERT_TRUE(linkWithLog(m_home.whisperCLI, folder + QStringLiteral("/whisper-cli"), log));
    m_home.whisperCLI = folder + QStringLiteral("/whisper-cli");
    m_home.language = QStringLiteral("en");
    start();
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    ASSERT_TRUE(m_program.quit());
    EXPECT_FALSE(textIn(log).contains(model));

    QDir().mkpath(QFileInfo(model).path());
    ASSERT_TRUE(QFile::copy(QStringLiteral(TOLMI_STARTING_MODEL), model));
    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM)));
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    EXPECT_TRUE(textIn(log).contains(QStringLiteral("-m %1").arg(model))) << textIn(log).toStdString();
}

TEST_F(WholeDictation, SecondStartOpensTheStudioAndTheFirstGoesOn) {
    start();
    RunningProgram second;
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM)));
    EXPECT_TRUE(m_program.isRunning());
    ASSERT_TRUE(goesToTheHistory(m_user));
    ASSERT_TRUE(m_editor.bringToFront());
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
}

TEST_F(WholeDictation, AWindowThatOpensMeanwhileWaitsForTheText) {
    start();
    m_user.press(VirtualUser::rightAlt);
    ASSERT_TRUE(waitUntil([this] { return m_program.state() == u"recording"; }, 20));
    ASSERT_TRUE(playIntoMicrophone(sample("english-1")));
    m_user.release(VirtualUser::rightAlt);
    ASSERT_TRUE(waitUntil([this] { return m_program.state() == u"transcribing"; }, 20));
    RunningProgram second;
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM)));
    EXPECT_TRUE(waitUntil(isStudioActive, 60));
    EXPECT_TRUE(waitUntil([this] { return m_program.state() == u"idle"; }, 60));
    ASSERT_TRUE(m_editor.bringToFront());
    EXPECT_EQ(words(m_editor.text()), wordsOfSample("english-1"));
}

TEST_F(WholeDictation, NumbersBeyondUseInTheSettingsKeepNobodyFromDictating) {
    m_home.settings = { { "tolmi.audioRetentionHours", std::numeric_limits<qint64>::max() },
        { "tolmi.audioRetentionMaxMB", std::numeric_limits<qint64>::max() } };
    start();
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
}

TEST_F(WholeDictation, WhoReadsTheLogMayGo) {
    ASSERT_TRUE(prepareHome(m_home));
    QProcess first;
    first.start("bash", { "-c", QStringLiteral("exec '%1' 2> >(exec true)").arg(TOLMI_PROGRAM) });
    ASSERT_TRUE(first.waitForStarted());
    const auto isInstance = [] { return QFileInfo::exists(dataFolder() + "/tolmi.socket"); };
    ASSERT_TRUE(waitUntil(isInstance, 20));
    // Without a sound server each press is worth a line.
    ASSERT_EQ(runTool("pactl", { "exit" }), 0);
    for (int press = 0; press < 3; ++press) {
        m_user.press(VirtualUser::rightAlt);
        m_user.release(VirtualUser::rightAlt);
        EXPECT_FALSE(waitUntil([&first] { return first.state() != QProcess::Running; }, 2));
    }
    first.terminate();
    EXPECT_TRUE(first.waitForFinished(5000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
}

TEST_F(WholeDictation, QuittingEndsTheTranscriptionInProgress) {
    const QString folder = qEnvironmentVariable("TOLMI_DESKTOP_DIR");
    const QString slow = folder + QStringLiteral("/slow-whisper-cli");
    QFile file(slow);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("#!/bin/bash\necho $$ >'%1/pid'\nexec sleep 600\n").arg(folder).toUtf8());
    file.close();
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    m_home.whisperCLI = slow;
    start();
    m_user.press(VirtualUser::rightAlt);
    ASSERT_TRUE(waitUntil([this] { return m_program.state() == u"recording"; }, 20));
    ASSERT_TRUE(playIntoMicrophone(sample("english-1")));
    m_user.release(VirtualUser::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return QFileInfo(folder + "/pid").size() > 0; }, 20));
    const QString process = QStringLiteral("/proc/") + textIn(folder + "/pid").trimmed();
    EXPECT_TRUE(QFileInfo::exists(process));
    EXPECT_TRUE(m_program.quit());
    EXPECT_TRUE(waitUntil([&] { return !QFileInfo::exists(process); }, 5));
}

TEST_F(WholeDictation, AnotherUsersOllamaHearsNothing) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can start a server as another user";
    QProcess server;
    server.start("setpriv",
        { "--reuid=65534", "--regid=65534", "--clear-groups", "/usr/bin/python3", "-c",
            "import socket\ns = socket.create_server(('127.0.0.1', 0))\n"
            "print(s.getsockname()[1], end='', flush=True)\ns.accept()\nprint('visited', flush=True)" });
    ASSERT_TRUE(server.waitForReadyRead(30000)) << server.readAllStandardError().toStdString();
    m_home.settings = { { "tolmi.ollamaEndpoint", "http://localhost:" + QString(server.readAll()) } };
    start();
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    EXPECT_EQ(server.readAll(), QByteArray());
    server.kill();
    server.waitForFinished();
}

TEST_F(WholeDictation, WhatAnotherUserPlantedIsNotRun) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    const QString folder = qEnvironmentVariable("TOLMI_DESKTOP_DIR") + "/planted";
    const QString planted = folder + "/.tools/whisper-cli";
    QDir().mkpath(folder + "/.tools");
    ASSERT_TRUE(linkWithLog(m_home.whisperCLI, planted, folder + "/calls"));
    for (const QString &path : { folder + "/.tools", planted })
        ASSERT_EQ(chown(qPrintable(path), 65534, 65534), 0);
    m_home.whisperCLI = QString();
    ASSERT_TRUE(QDir::setCurrent(folder));
    start();
    EXPECT_EQ(statesOf(speak("english-1")), statesOfAFailure);
    EXPECT_FALSE(QFileInfo::exists(folder + "/calls"));
    EXPECT_FALSE(textIn(settingsPath()).contains("planted"));
}

TEST_F(WholeDictation, LeavesAnEntryInTheHistory) {
    start();
    const DictationReport report = speak("english-1");
    ASSERT_TRUE(report.history);
    EXPECT_EQ(report.history->target, QString("Mousepad"));
    EXPECT_EQ(report.history->bundleID, QString("org.xfce.mousepad"));
    EXPECT_EQ(report.history->recording, QFileInfo(report.recordingPath).fileName());
    EXPECT_EQ(report.history->pass, QString("single"));
    EXPECT_GT(report.history->duration, 0);
}

// The model hears a polite phrase in silence, as all such models do.
TEST_F(WholeDictation, SilencePastesNothing) {
    start();
    const DictationReport report = dictate({ m_user, m_program, m_editor },
        made("silence.wav", { "-n", "-r", "16000", "-b", "16" }, { "trim", "0", "2" }));
    EXPECT_EQ(statesOf(report), (QStringList { "recording", "transcribing", "done", "idle" }));
    EXPECT_EQ(report.pasted, QString());
    EXPECT_FALSE(report.history);
    EXPECT_TRUE(report.isClipboardRestored);
}

TEST_F(WholeDictation, QuietSpeechIsTranscribedTwice) {
    m_home.settings = { { "tolmi.performanceMode", "maxQuality" } };
    start();
    const DictationReport report = dictate(
        { m_user, m_program, m_editor }, made("quiet.wav", { "-v", "0.02", sample("english-1") }, {}));
    EXPECT_TRUE(statesOf(report).contains("optimizingquality")) << statesOf(report).join(' ').toStdString();
    EXPECT_EQ(words(report.pasted), wordsOfSample("english-1"));
    EXPECT_TRUE(report.history);
}

TEST_F(WholeDictation, AnAnsweringOllamaHasTheLastWord) {
    MisbehavingServer ollama;
    ollama.script = { { MisbehavingServer::send(
        MisbehavingServer::answer(200, R"({"response":" Thanks for all your help, John! "})")) } };
    m_home.settings = { { "tolmi.ollamaEndpoint", ollama.url().toString() } };
    start();
    EXPECT_EQ(speak("english-1").pasted, QString("Thanks for all your help, John!"));
    ASSERT_EQ(ollama.requests.size(), 1U);
    EXPECT_TRUE(ollama.requests.front().startsWith("POST /api/generate "))
        << ollama.requests.front().toStdString();
}

TEST_F(WholeDictation, WithoutOllamaTheRulesClean) {
    MisbehavingServer ollama;
    ollama.refuseConnections();
    m_home.settings = { { "tolmi.ollamaEndpoint", ollama.url().toString() } };
    start();
    EXPECT_EQ(speak("romanian-1").pasted, QString("Cred, c\u0103 trebuie s\u0103 \u0219terg planul."));
}

TEST_F(WholeDictation, TheMachinesOwnOllamaIsLeftAlone) {
    const UsualOllamaPort port;
    if (!port.isHeld())
        GTEST_SKIP() << "something listens at Ollama's port, so nobody can tell who comes";
    start();
    EXPECT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    EXPECT_EQ(port.visitorCount(), 0);
}

TEST_F(WholeDictation, WhatWasSaidIsPrivateWhateverTheUmask) {
    ASSERT_TRUE(prepareHome(m_home));
    const mode_t usual = umask(0);
    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM)));
    umask(usual);
    ASSERT_TRUE(m_editor.open());
    ASSERT_EQ(words(speak("english-1").pasted), wordsOfSample("english-1"));
    ASSERT_TRUE(m_program.quit());
    const QString data = qEnvironmentVariable("XDG_DATA_HOME") + "/Tolmi";
    const QStringList written = withFiles(data + "/audio-cache")
        + withFiles(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/tolmi-transcripts")
        + QStringList { data + "/history.json", settingsPath() };
    EXPECT_EQ(written.size(), 6)
        << "two folders with a recording and a transcript, the history and the settings";
    EXPECT_EQ(openToOthers(written), QStringList());
}
