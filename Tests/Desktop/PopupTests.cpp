// The popup of the real program in a real tray: presses of the item, of other windows and of keys.

#include "desktop-driver/KeyboardWalk.h"
#include "desktop-driver/ProgramWindows.h"
#include "dictate/Editor.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"
#include "dictate/Waiting.h"

#include "Support/Print.h"

#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

using ProgramWindows::popup;

constexpr double patience = 20;

class PopupOfTheProgram : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(prepareHome({ .settings = { { "tolmi.hasCompletedOnboarding", true } } }));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
        ASSERT_TRUE(waitUntil([this] { return !item().isNull(); }, patience))
            << "there is no item in the tray";
    }

    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    static QRect item() { return ProgramWindows::ofWidth(10, 40); }

    static void press(const QPoint &point) {
        outputOf(QStringLiteral("xdotool"),
            { "mousemove", QString::number(point.x()), QString::number(point.y()), "click", "1" });
    }

    /// Presses the item, each time at another point of it: the desktop takes a quick second press at the same
    /// one for the end of a double click.
    void pressItem() {
        m_pressesRight = !m_pressesRight;
        press(item().center() + QPoint(m_pressesRight ? 6 : -6, 0));
    }

    void open() {
        pressItem();
        ASSERT_TRUE(waitUntil([] { return !popup().isNull(); }, patience))
            << m_program.output().toStdString();
    }
    static bool isGone() {
        return waitUntil([] { return popup().isNull(); }, patience);
    }

    /// Repeats what may come too early to have its effect.
    static bool repeatUntil(const std::function<void()> &attempt, const std::function<bool()> &holds) {
        for (int attempts = 0; attempts < 10; ++attempts) {
            attempt();
            if (waitUntil(holds, 2))
                return true;
        }
        return false;
    }
    bool typeUntil(const char *key, const std::function<bool()> &holds) {
        return repeatUntil([this, key] { m_user.type(key); }, holds);
    }

    static QJsonValue stored(const QString &key) {
        QFile file(settingsPath());
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object().value(key)
                                              : QJsonValue();
    }

    VirtualUser m_user;
    RunningProgram m_program;
    bool m_pressesRight = false;
};

} // namespace

TEST_F(PopupOfTheProgram, StandsOverItsItemInTheCorner) {
    open();
    EXPECT_EQ(popup().width(), 320);
    EXPECT_EQ(popup().right() + 1, 1920 - 8);
    EXPECT_EQ(popup().bottom() + 1, item().top() - 6);
}

TEST_F(PopupOfTheProgram, ASecondPressHidesIt) {
    open();
    pressItem();
    EXPECT_TRUE(isGone());
    open();
}

TEST_F(PopupOfTheProgram, APressOfAnotherWindowHidesIt) {
    Editor editor(m_user);
    ASSERT_TRUE(editor.open());
    const QRect window
        = ProgramWindows::geometryOf(outputOf(QStringLiteral("xdotool"), { "getactivewindow" }).trimmed());
    open();
    // A press before the popup has the keyboard takes it from nobody.
    EXPECT_TRUE(repeatUntil([&] { press(window.center()); }, [] { return popup().isNull(); }));
}

TEST_F(PopupOfTheProgram, APressOfTheBareDesktopHidesIt) {
    open();
    press({ 600, 300 });
    EXPECT_TRUE(isGone());
}

TEST_F(PopupOfTheProgram, APressOfItsOwnLeavesIt) {
    open();
    const QPoint nothing(popup().left() + 20, popup().top() + 12);
    press(nothing);
    press(item().center());
    // Had the first press hidden it, the second would have opened it.
    EXPECT_TRUE(isGone());
}

TEST_F(PopupOfTheProgram, EscapeHidesItAndTheEditorHasTheKeyboardAgain) {
    Editor editor(m_user);
    ASSERT_TRUE(editor.open());
    open();
    EXPECT_TRUE(typeUntil("Escape", [] { return popup().isNull(); }));
    EXPECT_TRUE(typeUntil("a", [&editor] { return editor.text().startsWith('a'); }));
}

TEST_F(PopupOfTheProgram, RefinementIsSwitchedAndStored) {
    open();
    const QPoint refinement(popup().right() - 32, popup().top() + 230);
    press(refinement);
    EXPECT_TRUE(waitUntil([] { return stored("tolmi.refinementEnabled") == QJsonValue(false); }, patience));
    EXPECT_FALSE(popup().isNull());
    press(refinement);
    EXPECT_TRUE(waitUntil([] { return stored("tolmi.refinementEnabled") == QJsonValue(true); }, patience));
}

TEST_F(PopupOfTheProgram, KeyboardReachesEveryControlAndEachHasAName) {
    open();
    const AccessibleProgram screen(m_program.processId());
    ASSERT_TRUE(screen.find("dialog", "Tolmi Flow", patience)) << screen.described().toStdString();
    EXPECT_EQ(keyboardComplaints(m_user, screen), QStringList()) << screen.described().toStdString();
}

TEST_F(PopupOfTheProgram, ItsWaysOutLeadWhereTheySay) {
    const AccessibleProgram screen(m_program.processId());
    const auto choose = [&](const QString &name) {
        open();
        const auto popupDialog = screen.find("dialog", "Tolmi Flow", patience);
        ASSERT_TRUE(popupDialog) << screen.described().toStdString();
        const auto button = screen.within(*popupDialog).find("push button", name, patience);
        ASSERT_TRUE(button) << screen.described().toStdString();
        press(button->rectangle().center());
        EXPECT_TRUE(isGone());
    };
    const auto expectWorkspace = [&](const QString &heading) {
        EXPECT_TRUE(screen.find("heading", heading, patience)) << screen.described().toStdString();
    };
    choose("Settings...");
    expectWorkspace("Hotkey");
    choose("User");
    expectWorkspace("Identity");
    choose("Open Studio");
    expectWorkspace("Command Center");
    choose("Quit Tolmi");
    EXPECT_TRUE(waitUntil([this] { return !m_program.isRunning(); }, patience));
}
