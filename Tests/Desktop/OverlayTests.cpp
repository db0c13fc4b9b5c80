#include "Desktop/TestPrograms.h"
#include "Platform/Linux/X11/X11FloatingWindows.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Overlay/QuickOverlayWindow.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickView>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

using Kind = DictationState::Kind;

namespace {

constexpr int keyA = 38;

class Overlay : public testing::Test {
protected:
    /// The window under the pointer once it is moved there.
    static WId windowAt(const QPoint &point) {
        const QByteArray told = outputOf(QStringLiteral("xdotool"),
            { QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
                QStringLiteral("getmouselocation"), QStringLiteral("--shell") });
        const auto match
            = QRegularExpression(QStringLiteral("WINDOW=(\\d+)")).match(QString::fromLatin1(told));
        return WId(match.captured(1).toULongLong());
    }

    /// What the tool tip on the screen says; empty while there is none.
    static QString words() {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWindow *each) {
            return each->type() == Qt::ToolTip && each->isVisible() && each->isExposed();
        });
        return found == windows.end() ? QString() : (*found)->property("text").toString();
    }

    QQuickView &view() { return window->view(); }
    QPoint center() { return view().geometry().center(); }

    TestEditor editor;
    X11FloatingWindows floatingWindows;
    QuickOverlayWindow *window = nullptr;
    OverlayPanelController controller { [this](OverlayViewModel &model) {
        auto made = std::make_unique<QuickOverlayWindow>(model, floatingWindows);
        window = made.get();
        return made;
    } };
};

} // namespace

TEST_F(Overlay, EditorKeepsTheKeyboardInEveryState) {
    QString expected;
    for (const Kind kind : { Kind::Recording, Kind::Transcribing, Kind::OptimizingQuality, Kind::Refining,
             Kind::Pasting, Kind::Done }) {
        controller.show(kind, AppLanguage::English);
        ASSERT_TRUE(untilTrue([&] { return view().isExposed(); }));
        typeKey(keyA);
        expected += QLatin1Char('a');
        EXPECT_TRUE(editor.waitForText(expected)) << editor.text().toStdString();
    }
    EXPECT_FALSE(view().isActive());
}

TEST_F(Overlay, OnlyTheMiddleAnswersThePointer) {
    controller.show(Kind::Recording, AppLanguage::English);
    ASSERT_TRUE(untilTrue([&] { return windowAt(center()) == view().winId(); }));
    for (const QPoint away : { QPoint(30, 0), QPoint(0, 30), QPoint(-20, -20), QPoint(70, 70) })
        EXPECT_NE(windowAt(center() + away), view().winId());
}

TEST_F(Overlay, WordsAppearUnderThePointer) {
    controller.show(DictationState::error(QStringLiteral("No microphone.")), AppLanguage::English);
    ASSERT_TRUE(untilTrue([&] { return windowAt(center()) == view().winId(); }));
    EXPECT_TRUE(untilTrue([&] { return words() == QStringLiteral("No microphone."); }));
    windowAt(center() + QPoint(60, 60));
    EXPECT_TRUE(untilTrue([&] { return words().isEmpty(); }));
}

TEST_F(Overlay, WordsGoWithIt) {
    controller.show(DictationState::error(QStringLiteral("No microphone.")), AppLanguage::English);
    ASSERT_TRUE(untilTrue([&] { return windowAt(center()) == view().winId(); }));
    ASSERT_TRUE(untilTrue([] { return !words().isEmpty(); }));
    controller.hide();
    ASSERT_TRUE(untilTrue([&] { return !view().isVisible(); }));
    EXPECT_EQ(words(), QString());

    // The pointer leaves while there is nothing that could tell.
    windowAt(center() + QPoint(60, 60));
    controller.show(Kind::Done, AppLanguage::English);
    ASSERT_TRUE(untilTrue([&] { return view().isExposed(); }));
    QElapsedTimer since;
    since.start();
    constexpr int longerThanWordsTake = 1000;
    EXPECT_TRUE(untilTrue([&] { return !words().isEmpty() || since.elapsed() > longerThanWordsTake; }));
    EXPECT_EQ(words(), QString());
}

TEST_F(Overlay, StandsAboveAFullScreenWindow) {
    outputOf(QStringLiteral("wmctrl"),
        { QStringLiteral("-r"), QStringLiteral(":ACTIVE:"), QStringLiteral("-b"),
            QStringLiteral("add,fullscreen") });
    controller.show(Kind::Recording, AppLanguage::English);
    EXPECT_TRUE(untilTrue([&] { return windowAt(center()) == view().winId(); }));
    typeKey(keyA);
    EXPECT_TRUE(editor.waitForText(QStringLiteral("a")));
}

TEST_F(Overlay, StandsOnTheScreenOfTheWindowInUse) {
    const QString left = QStringLiteral("960/250x1080/280+0+0"),
                  right = QStringLiteral("960/250x1080/280+960+0");
    outputOf(QStringLiteral("xrandr"),
        { QStringLiteral("--setmonitor"), QStringLiteral("left"), left, QStringLiteral("screen") });
    outputOf(QStringLiteral("xrandr"),
        { QStringLiteral("--setmonitor"), QStringLiteral("right"), right, QStringLiteral("none") });
    ASSERT_TRUE(untilTrue([] { return QGuiApplication::screens().size() == 2; }));
    for (const int x : { 1000, 100 }) {
        outputOf(QStringLiteral("wmctrl"),
            { QStringLiteral("-r"), QStringLiteral(":ACTIVE:"), QStringLiteral("-e"),
                QStringLiteral("0,%1,200,300,200").arg(x) });
        EXPECT_TRUE(untilTrue([&] {
            controller.show(Kind::Recording, AppLanguage::English);
            return view().geometry() == QRect(x < 960 ? 405 : 1365, 8, 150, 150);
        })) << x;
    }
    ASSERT_TRUE(untilTrue([&] { return windowAt(center()) == view().winId(); }));
}

TEST_F(Overlay, FadesAwayWhenHidden) {
    controller.show(Kind::Done, AppLanguage::English);
    ASSERT_TRUE(untilTrue([&] { return view().isExposed(); }));
    controller.hide();
    EXPECT_TRUE(untilTrue([&] { return !view().isVisible(); }));
    EXPECT_NE(windowAt(center()), view().winId());
}
