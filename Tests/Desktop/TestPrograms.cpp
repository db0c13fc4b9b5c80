#include "Desktop/TestPrograms.h"
#include "Support/UntilTrue.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <thread>

// Last, because of its macros.
#include <X11/Xlib.h>

using namespace std::chrono_literals;

QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20000) || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << " " << arguments.join(u' ').toStdString() << " failed";
        process.kill();
        process.waitForFinished();
    }
    return process.readAllStandardOutput();
}

namespace {
/// The output of a program that may fail.
QByteArray triedOutputOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(20000);
    return process.readAllStandardOutput();
}

/// The window of the owner, as the X server tells it: the owner may be this thread, which is waiting.
Window ownerOf(const QString &selection) {
    const std::unique_ptr<Display, int (*)(Display *)> display(XOpenDisplay(nullptr), &XCloseDisplay);
    const QByteArray name = selection.toUpper().toLatin1();
    return XGetSelectionOwner(display.get(), XInternAtom(display.get(), name.constData(), False));
}

/// The owner after this one; none when none comes. This program handles no events meanwhile.
Window nextOwnerOf(const QString &selection, Window previous) {
    for (const QDeadlineTimer deadline(60s); !deadline.hasExpired(); std::this_thread::sleep_for(2ms)) {
        const Window owner = ownerOf(selection);
        if (owner != None && owner != previous)
            return owner;
    }
    return None;
}

QByteArray classOfActiveWindow() {
    const QByteArray window
        = triedOutputOf(QStringLiteral("xdotool"), { QStringLiteral("getactivewindow") }).trimmed();
    return triedOutputOf(QStringLiteral("xprop"),
        { QStringLiteral("-id"), QString::fromLatin1(window), QStringLiteral("WM_CLASS") });
}
} // namespace

QByteArray clipboard(const QString &type, const QString &selection) {
    return triedOutputOf(QStringLiteral("xclip"),
        { QStringLiteral("-selection"), selection, QStringLiteral("-o"), QStringLiteral("-t"), type });
}

void pressKey(int keyCode) {
    outputOf(QStringLiteral("xdotool"), { QStringLiteral("keydown"), QString::number(keyCode) });
}

void releaseKey(int keyCode) {
    outputOf(QStringLiteral("xdotool"), { QStringLiteral("keyup"), QString::number(keyCode) });
}

void typeKey(int keyCode) {
    pressKey(keyCode);
    releaseKey(keyCode);
}

void setLayout(const QString &layout, const QString &variant) {
    outputOf(QStringLiteral("setxkbmap"),
        { QStringLiteral("-option"), QString(), QStringLiteral("-option"), QStringLiteral("grp:caps_toggle"),
            QStringLiteral("-layout"), layout, QStringLiteral("-variant"), variant });
}

void selectNextLayout() {
    typeKey(66);
}

void TestProgram::startProgram(
    const QString &program, const QStringList &arguments, const QString &platform) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program, arguments);
    EXPECT_TRUE(m_process.waitForStarted()) << program.toStdString();
}

TestProgram::TestProgram(const QString &program, const QStringList &arguments, const QString &windowClass) {
    startProgram(program, arguments);
    EXPECT_TRUE(untilTrue([&windowClass] { return classOfActiveWindow().contains(windowClass.toLatin1()); }))
        << windowClass.toStdString() << " did not come to the front";
}

TestProgram::~TestProgram() {
    m_process.kill();
    m_process.waitForFinished();
}

void TestProgram::hang() const {
    ::kill(pid_t(processID()), SIGSTOP);
}

void TestProgram::resume() const {
    ::kill(pid_t(processID()), SIGCONT);
}

CopyingProgram::CopyingProgram(const QByteArray &text, const QString &selection) {
    const Window ownerBefore = ownerOf(selection);
    m_process.start(QStringLiteral("xclip"),
        { QStringLiteral("-quiet"), QStringLiteral("-selection"), selection, QStringLiteral("-i") });
    m_process.write(text);
    m_process.closeWriteChannel();
    while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten()) { }
    EXPECT_NE(nextOwnerOf(selection, ownerBefore), Window(None)) << "the program copied nothing";
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING"), selection), text);
}

CopyingProgram::~CopyingProgram() {
    m_process.kill();
    m_process.waitForFinished();
}

void CopyingProgram::hang() {
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

TestEditor::TestEditor(const QStringList &arguments, const QString &platform) {
    startProgram(QStringLiteral(TOLMI_TEST_EDITOR), arguments, platform);
    EXPECT_TRUE(untilTrue([this] {
        readOutput();
        return m_said.contains(QLatin1String("ready"));
    })) << "the editor did not get the focus";
}

void TestEditor::readOutput() {
    m_output += m_process.readAllStandardOutput();
    for (qsizetype end = m_output.indexOf('\n'); end >= 0; end = m_output.indexOf('\n')) {
        const QJsonObject said = QJsonDocument::fromJson(m_output.left(end)).object();
        for (auto entry = said.begin(); entry != said.end(); ++entry)
            m_said.insert(entry.key(), entry.value());
        m_output.remove(0, end + 1);
    }
}

QString TestEditor::text() {
    readOutput();
    return m_said.value(QLatin1String("text")).toString();
}

bool TestEditor::waitForText(const QString &text) {
    return untilTrue([this, &text] { return this->text() == text; });
}

QJsonObject TestEditor::ask(const QJsonObject &command, const QString &answer) {
    m_said.remove(answer);
    m_process.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    EXPECT_TRUE(untilTrue([this, &answer] {
        readOutput();
        return m_said.contains(answer);
    })) << answer.toStdString();
    return m_said;
}

void TestEditor::copy(const QJsonObject &content) {
    ask({ { QStringLiteral("copy"), content } }, QStringLiteral("copied"));
}

void TestEditor::waitUntilAsked() {
    EXPECT_TRUE(untilTrue([this] {
        readOutput();
        return m_said.contains(QLatin1String("asked"));
    })) << "nobody wants the type that is held back";
}

void TestEditor::grabKeyboard() {
    ask({ { QStringLiteral("grab"), true } }, QStringLiteral("grabbed"));
}

QJsonObject TestEditor::read(const QStringList &types) {
    return ask({ { QStringLiteral("read"), QJsonArray::fromStringList(types) } }, QStringLiteral("clipboard"))
        .value(QLatin1String("clipboard"))
        .toObject();
}
