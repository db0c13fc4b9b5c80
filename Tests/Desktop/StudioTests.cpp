// The Studio of the real program among the windows of a desktop.

#include "Desktop/StatusNotifierHost.h"
#include "Desktop/TestPrograms.h"
#include "Support/UntilTrue.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"
#include "dictate/Waiting.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

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

    void start() {
        ASSERT_TRUE(prepareHome(m_home));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
    }
    /// Starts the program where it has an item in a panel, so that no window opens by itself.
    void startUnderAPanel() {
        m_panel.emplace();
        start();
        ASSERT_TRUE(untilTrue([this] { return !m_panel->items().isEmpty(); }));
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

    /// Waits for the window and goes to the history, the one workspace that needs more room than the window
    /// has at first. Keys that come before the program has heard of its focus go nowhere.
    bool goesToTheHistory() {
        return untilTrue([] { return hasKeyboard(); }) && untilTrue([this] {
            m_user.typeWithControl("4");
            return width() == 1140;
        });
    }

    /// What the screen shows where the overlay has its symbol.
    static QString middleOfTheOverlay() {
        return answerOf(QStringLiteral("import"),
            { QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("-crop"),
                QStringLiteral("1x1+960+83"), QStringLiteral("txt:-") });
    }

    /// Starts the program a second time, which tells the first.
    static void startAgain() {
        RunningProgram second;
        EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM)));
    }

    HomeOptions m_home;
    VirtualUser m_user;
    std::optional<StatusNotifierHost> m_panel;
    RunningProgram m_program;
};

/// Longer than a window takes that opens by itself.
constexpr double patience = 2;

} // namespace

TEST_F(Studio, StaysAwayInTheTray) {
    startUnderAPanel();
    EXPECT_FALSE(waitUntil(isThere, patience));
}

TEST_F(Studio, OpensAtLaunchWhereThereIsNoTray) {
    start();
    EXPECT_TRUE(untilTrue([] { return hasKeyboard(); }));
}

TEST_F(Studio, SecondStartBringsItBeforeTheProgramInUse) {
    startUnderAPanel();
    const TestEditor editor;
    ASSERT_FALSE(isThere());
    startAgain();
    EXPECT_TRUE(untilTrue([] { return hasKeyboard(); }));

    const TestEditor other;
    ASSERT_TRUE(untilTrue([] { return !hasKeyboard(); }));
    startAgain();
    EXPECT_TRUE(untilTrue([] { return hasKeyboard(); })) << "an open window comes to the front again";
}

TEST_F(Studio, SecondStartFindsTheFirstWhateverItsTemporaryFolder) {
    startUnderAPanel();
    const QTemporaryDir other;
    RunningProgram second;
    second.setVariable(QStringLiteral("XDG_RUNTIME_DIR"), other.path());
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM)));
    EXPECT_TRUE(untilTrue([] { return hasKeyboard(); }));
}

TEST_F(Studio, OpensByItselfOnlyOnceTheDictationKeyIsUp) {
    startUnderAPanel();
    m_user.press(VirtualUser::rightAlt);
    ASSERT_TRUE(untilTrue([this] { return m_program.state() == u"recording"; }));
    startAgain();
    EXPECT_FALSE(waitUntil(isThere, patience));
    m_user.release(VirtualUser::rightAlt);
    EXPECT_TRUE(untilTrue([this] { return m_program.firstStage("state", "transcribing").has_value(); }));
    EXPECT_TRUE(untilTrue([] { return hasKeyboard(); }));
}

TEST_F(Studio, ArrowsGoFromWorkspaceToWorkspace) {
    start();
    ASSERT_TRUE(untilTrue([] { return hasKeyboard(); }));
    EXPECT_TRUE(untilTrue([] { return width() == 1100; }));
    EXPECT_TRUE(untilTrue([this] {
        m_user.type("Down");
        return width() == 1140;
    }));
}

TEST_F(Studio, ShortcutsReachTheWorkspacesAndTheEnd) {
    start();
    EXPECT_TRUE(goesToTheHistory());
    m_user.typeWithControl("q");
    EXPECT_TRUE(untilTrue([this] { return !m_program.isRunning(); }));
}

TEST_F(Studio, ComesBackMaximised) {
    const auto isMaximised = [] {
        return answerOf(QStringLiteral("bash"),
            { QStringLiteral("-c"), QStringLiteral("xprop -id $(xdotool getactivewindow) _NET_WM_STATE") })
            .contains(QStringLiteral("MAXIMIZED_VERT"));
    };
    start();
    ASSERT_TRUE(untilTrue([] { return hasKeyboard(); }));
    answerOf(QStringLiteral("wmctrl"),
        { QStringLiteral("-r"), QStringLiteral(":ACTIVE:"), QStringLiteral("-b"),
            QStringLiteral("add,maximized_vert,maximized_horz") });
    ASSERT_TRUE(untilTrue(isMaximised));
    ASSERT_TRUE(untilTrue([this] {
        m_user.typeWithControl("w");
        return !isThere();
    }));
    RunningProgram second;
    EXPECT_FALSE(second.start(QStringLiteral(TOLMI_PROGRAM)));
    ASSERT_TRUE(untilTrue([] { return hasKeyboard(); }));
    EXPECT_TRUE(isMaximised());
    EXPECT_GT(width(), 1800);
}

TEST_F(Studio, OverlayIsSeenBesideIt) {
    start();
    ASSERT_TRUE(goesToTheHistory());
    const QString desktop = middleOfTheOverlay();
    ASSERT_FALSE(desktop.isEmpty());
    m_user.press(VirtualUser::rightAlt);
    EXPECT_TRUE(untilTrue([&desktop] { return middleOfTheOverlay() != desktop; }));
    EXPECT_EQ(m_program.state(), QStringLiteral("recording"));
    m_user.release(VirtualUser::rightAlt);
}
