// The Studio of the real program among the windows of a desktop.

#include "Desktop/TestPrograms.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace {

QString answerOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(5000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

class Studio : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    void start(const QStringList &arguments) {
        ASSERT_TRUE(prepareHome(m_home));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM), arguments))
            << m_program.output().toStdString();
    }

    static bool hasKeyboard() {
        return answerOf(QStringLiteral("xdotool"),
                   { QStringLiteral("getactivewindow"), QStringLiteral("getwindowname") })
            == QStringLiteral("Tolmi Studio");
    }

    static bool isThere() {
        return !answerOf(QStringLiteral("xdotool"),
            { QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                QStringLiteral("^Tolmi Studio$") })
                    .isEmpty();
    }

    static int width() {
        const QString geometry = answerOf(QStringLiteral("xdotool"),
            { QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^Tolmi Studio$"),
                QStringLiteral("getwindowgeometry"), QStringLiteral("--shell") });
        const qsizetype at = geometry.indexOf(QStringLiteral("WIDTH="));
        return at < 0 ? 0 : geometry.mid(at + 6).section(u'\n', 0, 0).toInt();
    }

    HomeOptions m_home;
    VirtualUser m_user;
    RunningProgram m_program;
};

} // namespace

TEST_F(Studio, StaysAwayInTheTray) {
    start({ QStringLiteral("--tray") });
    EXPECT_FALSE(isThere());
}

TEST_F(Studio, OpensAtLaunchWhereThereIsNoTray) {
    start({});
    EXPECT_TRUE(waitUntil([] { return hasKeyboard(); }));
}

TEST_F(Studio, SecondStartBringsItBeforeTheProgramInUse) {
    start({ QStringLiteral("--tray") });
    const TestEditor editor;
    ASSERT_FALSE(isThere());
    RunningProgram second;
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM), {}));
    EXPECT_TRUE(waitUntil([] { return hasKeyboard(); }));

    const TestEditor other;
    ASSERT_FALSE(hasKeyboard());
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM), {}));
    EXPECT_TRUE(waitUntil([] { return hasKeyboard(); })) << "an open window comes to the front again";
}

// The history is the workspace that needs more room than the window has at first.
TEST_F(Studio, KeyboardGoesFromWorkspaceToWorkspace) {
    start({});
    ASSERT_TRUE(waitUntil([] { return hasKeyboard(); }));
    EXPECT_EQ(width(), 1100);
    for (int count = 0; count < 3; ++count)
        m_user.type("Down");
    EXPECT_TRUE(waitUntil([] { return width() == 1140; }));
}

TEST_F(Studio, ShortcutsReachTheWorkspacesAndTheEnd) {
    start({});
    ASSERT_TRUE(waitUntil([] { return hasKeyboard(); }));
    m_user.typeWithControl("4");
    EXPECT_TRUE(waitUntil([] { return width() == 1140; }));
    m_user.typeWithControl("q");
    EXPECT_TRUE(waitUntil([this] { return !m_program.isRunning(); }));
}
