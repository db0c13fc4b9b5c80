#include "Support/FakeFloatingWindows.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Overlay/QuickOverlayWindow.h"
#include "Views/ViewsFixture.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

using Kind = DictationState::Kind;

namespace {

class OverlayWindowTest : public ViewsFixture {
protected:
    QQuickView &view() { return window->view(); }
    bool isTimelineRunning() { return view().rootObject()->property("isTimelineRunning").toBool(); }

    FakeFloatingWindows floatingWindows;
    QuickOverlayWindow *window = nullptr;
    OverlayPanelController controller { [this](OverlayViewModel &model) {
        auto made = std::make_unique<QuickOverlayWindow>(model, floatingWindows);
        window = made.get();
        return made;
    } };
};

} // namespace

TEST_F(OverlayWindowTest, NeverTakesTheFocus) {
    EXPECT_TRUE(view().flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(view().flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(view().flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(view().color(), QColor(Qt::transparent));
    EXPECT_EQ(floatingWindows.preparedCount, 1);
    EXPECT_FALSE(view().isVisible());
}

TEST_F(OverlayWindowTest, StandsUnderTheTopEdgeOfTheScreen) {
    controller.show(Kind::Recording, AppLanguage::English);
    const QRect screen = *window->visibleFrame();
    EXPECT_EQ(view().geometry(), QRect(screen.center().x() + 1 - 75, screen.y() + 8, 150, 150));
}

TEST_F(OverlayWindowTest, ShapeFollowsTheState) {
    controller.show(Kind::Recording, AppLanguage::English);
    controller.show(Kind::Done, AppLanguage::English);
    ASSERT_EQ(floatingWindows.shapes.size(), 2);
    EXPECT_EQ(floatingWindows.shapes[0].first.frame, QRect(53, 53, 44, 44));
    EXPECT_EQ(floatingWindows.shapes[0].first.radius, 22);
    EXPECT_GT(floatingWindows.shapes[0].second.frame.width(), floatingWindows.shapes[1].second.frame.width());
}

TEST_F(OverlayWindowTest, TimelineRunsOnlyWhileRecording) {
    EXPECT_FALSE(isTimelineRunning());
    for (const Kind kind : { Kind::Recording, Kind::Transcribing, Kind::OptimizingQuality, Kind::Refining,
             Kind::Pasting, Kind::Done, Kind::Idle }) {
        controller.show(kind, AppLanguage::English);
        EXPECT_EQ(isTimelineRunning(), kind == Kind::Recording);
    }
    controller.show(DictationState::error(QStringLiteral("No.")), AppLanguage::English);
    EXPECT_FALSE(isTimelineRunning());
}

TEST_F(OverlayWindowTest, HiddenOneDrawsNothing) {
    controller.show(Kind::Recording, AppLanguage::English);
    controller.updateAudioLevel(0.6);
    int frames = 0;
    QObject::connect(&view(), &QQuickView::frameSwapped, &view(), [&frames] { ++frames; });
    ASSERT_TRUE(untilTrue([&] { return frames > 3; }));
    controller.hide();
    ASSERT_TRUE(untilTrue([&] { return !view().isVisible(); }));
    EXPECT_FALSE(isTimelineRunning());
    QCoreApplication::processEvents();
    frames = 0;
    // The state is unchanged, so anything that still requests frames would do so now.
    for (int turn = 0; turn < 50; ++turn) {
        controller.updateAudioLevel(turn % 2 == 0 ? 0.5 : 0);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    EXPECT_EQ(frames, 0);
}

TEST_F(OverlayWindowTest, ShownAgainWhileFadingItGoesWhenTheFadeIsOver) {
    controller.show(Kind::Done, AppLanguage::English);
    controller.hide();
    controller.show(Kind::Recording, AppLanguage::English);
    EXPECT_TRUE(view().isVisible());
    EXPECT_EQ(view().opacity(), 1);
    EXPECT_TRUE(untilTrue([&] { return !view().isVisible(); }));
    EXPECT_EQ(view().opacity(), 1);
}
