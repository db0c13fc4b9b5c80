// Whole dictations of the real program into native windows of Wayland.

#include "Desktop/TestPrograms.h"
#include "Desktop/WaylandPrograms.h"
#include "Platform/Linux/Wayland/WaylandActiveWindow.h"
#include "Support/UntilTrue.h"
#include "dictate/Dictation.h"
#include "dictate/Home.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {
const QString sample = QStringLiteral(TOLMI_SAMPLES_DIR "/english-2");

// Sound that went through the air, even a virtual one, may move a small model to another mark.
QString words(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("[.,?!]"))).simplified();
}

QString wordsOfSample() {
    QFile file(sample + QStringLiteral(".txt"));
    return file.open(QIODevice::ReadOnly) ? words(QString::fromUtf8(file.readAll())) : QString();
}

bool isStudioInFront() {
    const auto front = WaylandActiveWindow::current();
    return front && front->applicationID.compare(QLatin1String("tolmi"), Qt::CaseInsensitive) == 0;
}

class WaylandDictation : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(prepareHome({ .whisperCLI = QStringLiteral(TOLMI_TEST_WHISPER_CLI),
            .model = QStringLiteral(TOLMI_STARTING_MODEL) }));
    }
    void TearDown() override { EXPECT_TRUE(program.quit()); }

    /// Without a tray the Studio opens by itself, which must not take the focus from the target later.
    void start() {
        ASSERT_TRUE(program.start(QStringLiteral(TOLMI_PROGRAM))) << program.output().toStdString();
        ASSERT_TRUE(untilTrue(&isStudioInFront));
    }
    void speak() {
        program.forgetStages();
        control(QStringLiteral("press"));
        EXPECT_TRUE(untilTrue([this] { return program.state() == QLatin1String("recording"); }));
        EXPECT_TRUE(playIntoMicrophone(sample + QStringLiteral(".wav")));
        control(QStringLiteral("release"));
        EXPECT_TRUE(untilTrue([this] { return program.state() == QLatin1String("idle"); }))
            << program.state().toStdString();
    }

    /// As a key binding of the compositor does it.
    static void control(const QString &command) {
        EXPECT_EQ(QProcess::execute(QStringLiteral(TOLMI_TOLMICTL), { command }), 0);
    }

    RunningProgram program;
};

TEST_F(WaylandDictation, TheTextStandsInANativeWindowAndTheClipboardIsTheUsersAgain) {
    ASSERT_NO_FATAL_FAILURE(start());
    TestEditor editor({}, QStringLiteral("wayland"));
    WaylandCopyingProgram owner("copied before");
    speak();
    EXPECT_EQ(words(editor.text()), wordsOfSample());
    EXPECT_EQ(waylandClipboard(), "copied before");
    const QJsonArray history = historyEntries();
    ASSERT_EQ(history.size(), 1);
}

TEST_F(WaylandDictation, ANativeTerminalGetsItToo) {
    ASSERT_NO_FATAL_FAILURE(start());
    const QString file = dataFolder() + QStringLiteral("/typed");
    WaylandProgram terminal(QStringLiteral("foot"),
        { QStringLiteral("sh"), QStringLiteral("-c"),
            QStringLiteral("stty -icanon; exec cat >%1").arg(file) },
        QStringLiteral("foot"));
    speak();
    QFile typed(file);
    ASSERT_TRUE(typed.open(QIODevice::ReadOnly));
    EXPECT_EQ(words(QString::fromUtf8(typed.readAll())), wordsOfSample());
}
} // namespace
