#include "Platform/Linux/X11/X11EventTap.h"

#include "Desktop/TestPrograms.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11AccessibilityRight.h"
#include "Support/FakeSessionLock.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Dictation/GlobalHotkeyManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// A tap that runs on a thread of its own and keeps what it reports: the key code, then + or - for the
/// alternate flag, or * for a chord.
class RunningTap {
public:
    explicit RunningTap(const QByteArray &displayName = {})
        : m_factory(m_injectedKeys, displayName)
        , m_tap(m_factory.create([this](const TapEvent &event) { keep(event); })) {
        if (!m_tap)
            return;
        m_tap->setEnabled(true);
        m_thread = std::thread([this] {
            m_tap->run();
            m_hasEnded = true;
        });
    }
    ~RunningTap() {
        if (m_tap)
            m_tap->invalidate();
        if (m_thread.joinable())
            m_thread.join();
    }

    EventTap &tap() { return *m_tap; }
    bool isMade() const { return m_tap != nullptr; }
    bool hasEnded() const { return m_hasEnded; }
    InjectedKeys &injectedKeys() { return *m_injectedKeys; }

    std::vector<std::string> reports() {
        std::lock_guard lock(m_mutex);
        return m_reports;
    }
    bool waitForReports(size_t count) {
        const bool hasCome = untilTrue([this, count] { return reports().size() >= count; });
        EXPECT_TRUE(hasCome) << testing::PrintToString(reports());
        return hasCome;
    }
    /// What was reported before a press of the left key, which comes after everything else.
    std::vector<std::string> reportsUntilNow() {
        typeKey(leftAlt);
        EXPECT_TRUE(untilTrue([this] {
            const auto all = reports();
            return !all.empty() && all.back() == "58-";
        }));
        auto all = reports();
        all.resize(all.size() - std::min<size_t>(all.size(), 2));
        return all;
    }

private:
    void keep(const TapEvent &event) {
        std::lock_guard lock(m_mutex);
        const char flag = event.flags ? '+' : '-';
        m_reports.push_back(
            std::to_string(event.keyCode) + (event.type == TapEventType::ChordBegan ? '*' : flag));
    }

    std::mutex m_mutex;
    std::vector<std::string> m_reports;
    std::atomic<bool> m_hasEnded = false;
    std::shared_ptr<InjectedKeys> m_injectedKeys = std::make_shared<InjectedKeys>();
    X11EventTapFactory m_factory;
    std::shared_ptr<EventTap> m_tap;
    std::thread m_thread;
};

/// An X server beside that of the desktop.
class OtherServer {
public:
    explicit OtherServer(const QStringList &options = {}) {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("Xvfb"),
            QStringList { QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                QStringLiteral("tcp"), QStringLiteral("-ac") }
                + options);
        QByteArray number;
        EXPECT_TRUE(untilTrue([&] { return (number += m_process.readAllStandardOutput()).endsWith('\n'); }));
        m_name = ':' + number.trimmed();
    }
    ~OtherServer() { end(); }

    QByteArray name() const { return m_name; }
    void end() {
        m_process.terminate();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_name;
};

TEST(X11EventTapTests, ReportsBothAltKeys) {
    RunningTap running;
    pressKey(rightAlt);
    pressKey(leftAlt);
    releaseKey(rightAlt);
    releaseKey(leftAlt);
    ASSERT_TRUE(running.waitForReports(4));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "58+", "61+", "58-"));
}

TEST(X11EventTapTests, KnowsAKeyThatWasHeldBefore) {
    pressKey(leftAlt);
    RunningTap running;
    typeKey(rightAlt);
    releaseKey(leftAlt);
    ASSERT_TRUE(running.waitForReports(3));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "61+", "58-"));
}

TEST(X11EventTapTests, ReportsNoOtherKey) {
    RunningTap running;
    typeKey(leftShift);
    typeKey(38);
    EXPECT_THAT(running.reportsUntilNow(), IsEmpty());
}

TEST(X11EventTapTests, HearsKeysWhileAnotherProgramHasGrabbedThem) {
    TestEditor other;
    other.grabKeyboard();
    RunningTap running;
    typeKey(rightAlt);
    ASSERT_TRUE(running.waitForReports(2));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "61-"));
}

TEST(X11EventTapTests, HoldsALoneAltGrBack) {
    setLayout(QStringLiteral("ro"));
    RunningTap running;
    pressKey(rightAlt);
    EXPECT_TRUE(running.waitForReports(1));
    releaseKey(rightAlt);
    EXPECT_TRUE(running.waitForReports(2));
    typeKey(rightAlt);
    EXPECT_TRUE(running.waitForReports(4));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "61-", "61+", "61-"));
}

TEST(X11EventTapTests, AltGrWithALetterReportsNothing) {
    setLayout(QStringLiteral("ro"));
    RunningTap running;
    outputOf(QStringLiteral("xdotool"),
        { QStringLiteral("keydown"), QString::number(rightAlt), QStringLiteral("key"),
            QStringLiteral("38") });
    releaseKey(rightAlt);
    EXPECT_THAT(running.reportsUntilNow(), IsEmpty());
}

TEST(X11EventTapTests, AKeyThatJoinsAReportedPressIsAChord) {
    for (const auto *layout : { "us", "ro" }) {
        SCOPED_TRACE(layout);
        setLayout(QString::fromLatin1(layout));
        RunningTap running;
        pressKey(rightAlt);
        EXPECT_TRUE(running.waitForReports(1));
        typeKey(38);
        typeKey(38);
        releaseKey(rightAlt);
        EXPECT_TRUE(running.waitForReports(3));
        EXPECT_THAT(running.reports(), ElementsAre("61+", "61*", "61-"));
    }
}

TEST(X11EventTapTests, OurOwnKeysJoinNoPress) {
    setLayout(QStringLiteral("us"));
    RunningTap running;
    running.injectedKeys().willPress(38, std::chrono::steady_clock::now());
    pressKey(rightAlt);
    typeKey(38);
    releaseKey(rightAlt);
    EXPECT_TRUE(running.waitForReports(2));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "61-"));
}

TEST(X11EventTapTests, OurOwnKeysAreNoChord) {
    setLayout(QStringLiteral("ro"));
    RunningTap running;
    running.injectedKeys().willPress(38, std::chrono::steady_clock::now());
    outputOf(QStringLiteral("xdotool"),
        { QStringLiteral("keydown"), QString::number(rightAlt), QStringLiteral("key"),
            QStringLiteral("38") });
    EXPECT_TRUE(running.waitForReports(1));
    releaseKey(rightAlt);
    EXPECT_TRUE(running.waitForReports(2));
    EXPECT_THAT(running.reports(), ElementsAre("61+", "61-"));
}

TEST(X11EventTapTests, FollowsTheLayout) {
    setLayout(QStringLiteral("us"));
    RunningTap running;
    const QStringList chord { QStringLiteral("keydown"), QString::number(rightAlt), QStringLiteral("key"),
        QStringLiteral("38"), QStringLiteral("keyup"), QString::number(rightAlt) };
    outputOf(QStringLiteral("xdotool"), chord);
    EXPECT_THAT(running.reportsUntilNow(), ElementsAre("61+", "61*", "61-"));
    setLayout(QStringLiteral("ro"));
    outputOf(QStringLiteral("xdotool"), chord);
    EXPECT_EQ(running.reportsUntilNow().size(), 5);
    setLayout(QStringLiteral("us"));
    outputOf(QStringLiteral("xdotool"), chord);
    EXPECT_EQ(running.reportsUntilNow().size(), 10);
}

TEST(X11EventTapTests, IsSilentWhileDisabled) {
    RunningTap running;
    running.tap().setEnabled(false);
    typeKey(rightAlt);
    running.tap().setEnabled(true);
    EXPECT_LE(running.reportsUntilNow().size(), 0);
}

TEST(X11EventTapTests, EndsAtOnceWhenInvalidatedBefore) {
    X11EventTapFactory factory(std::make_shared<InjectedKeys>());
    const auto tap = factory.create([](const TapEvent &) {});
    ASSERT_TRUE(tap);
    tap->invalidate();
    tap->run();
}

TEST(X11EventTapTests, EndsWhenTheServerGoes) {
    OtherServer server;
    RunningTap running(server.name());
    ASSERT_TRUE(running.isMade());
    server.end();
    EXPECT_TRUE(untilTrue([&] { return running.hasEnded(); }));
}

TEST(X11EventTapTests, ThereIsNoneWithoutADisplay) {
    EXPECT_FALSE(RunningTap(":4711").isMade());
}

TEST(X11AccessibilityRightTests, IsThereOnThisServer) {
    X11AccessibilityRight right({});
    EXPECT_TRUE(right.state().isAvailable()) << right.state().reason.toStdString();
}

TEST(X11AccessibilityRightTests, TellsWhatToDoWithoutADisplay) {
    std::vector<QString> told;
    X11AccessibilityRight right([&](const QString &how) { told.push_back(how); }, ":4711");
    EXPECT_FALSE(right.state().isAvailable());
    right.prompt();
    right.openSettings();
    EXPECT_THAT(told, ElementsAre(right.state().reason));
}

TEST(X11AccessibilityRightTests, IsMissingWithoutSyntheticKeys) {
    OtherServer server({ QStringLiteral("-extension"), QStringLiteral("XTEST") });
    X11AccessibilityRight right({}, server.name());
    EXPECT_TRUE(right.state().reason.contains(QLatin1String("XTEST"))) << right.state().reason.toStdString();
}

/// The hotkey as the program has it.
class X11HotkeyTests : public testing::Test {
protected:
    X11HotkeyTests() {
        manager->onKeyDown = [this] { heard.push_back("down"); };
        manager->onKeyUp = [this] { heard.push_back("up"); };
        manager->start();
    }

    bool waitForHeard(size_t count) {
        return untilTrue([this, count] { return heard.size() >= count; });
    }

    MainLoopClock clock;
    X11EventTapFactory taps { std::make_shared<InjectedKeys>() };
    X11AccessibilityRight right { {} };
    FakeSessionLock lock;
    std::shared_ptr<GlobalHotkeyManager> manager
        = std::make_shared<GlobalHotkeyManager>(GlobalHotkeyManager::Platform { taps, right, lock, clock });
    std::vector<std::string> heard;
};

TEST_F(X11HotkeyTests, RightAltIsHeardWhereverTheFocusIs) {
    TestEditor editor;
    typeKey(rightAlt);
    EXPECT_TRUE(waitForHeard(2));
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

TEST_F(X11HotkeyTests, AltGrStillTypesItsLettersAndStartsNothing) {
    setLayout(QStringLiteral("ro"));
    TestEditor editor;
    outputOf(QStringLiteral("xdotool"),
        { QStringLiteral("keydown"), QString::number(rightAlt), QStringLiteral("key"), QStringLiteral("24"),
            QStringLiteral("keyup"), QString::number(rightAlt) });
    EXPECT_TRUE(editor.waitForText(QStringLiteral("â"))) << editor.text().toStdString();
    typeKey(rightAlt);
    EXPECT_TRUE(waitForHeard(2));
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}

TEST_F(X11HotkeyTests, RightAltAloneOpensNoMenu) {
    TestEditor editor({ QStringLiteral("--menu-bar") });
    typeKey(rightAlt);
    EXPECT_TRUE(waitForHeard(2));
    typeKey(38);
    EXPECT_TRUE(editor.waitForText(QStringLiteral("a"))) << editor.text().toStdString();
}

TEST_F(X11HotkeyTests, RestartsAndStopsWhileKeysArrive) {
    for (int round = 0; round < 5; ++round) {
        pressKey(rightAlt);
        manager->start();
        releaseKey(rightAlt);
    }
    manager->stop();
    typeKey(rightAlt);
    bool isAllHeard = false;
    clock.post([&] { isAllHeard = true; });
    EXPECT_TRUE(untilTrue([&] { return isAllHeard; }));
    heard.clear();
    manager->start();
    typeKey(rightAlt);
    EXPECT_TRUE(waitForHeard(2));
    EXPECT_THAT(heard, ElementsAre("down", "up"));
}
} // namespace
