#include "Support/FakeFloatingWindows.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Overlay/QuickOverlayWindow.h"
#include "Views/ViewsFixture.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

#include <cmath>

using Kind = DictationState::Kind;

namespace {

/// How a state is told, with the colours by their names.
struct Icon {
    Kind kind;
    const char *symbol;
    double pointSize;
    const char *accent;
    const char *glow;
    double glowOpacity;
};

class OverlayWindowTest : public ViewsFixture {
protected:
    QQuickView &view() { return window->view(); }
    const QQuickItem &child(const char *name) {
        return *view().rootObject()->findChild<QQuickItem *>(QLatin1String(name));
    }
    /// A colour of the palette by its name.
    QColor color(const char *name) {
        return view().rootObject()->property("colors").value<QObject *>()->property(name).value<QColor>();
    }
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

TEST_F(OverlayWindowTest, EachStateHasItsSymbolSizeColourAndGlow) {
    const Icon table[] {
        { Kind::Idle, "mic.fill", 15, "white", "white", 0.3 },
        { Kind::Recording, "mic.fill", 22, "white", "white", 0.32 },
        { Kind::OptimizingQuality, "dial.high.fill", 16, "cloud", "white", 0.8 },
        { Kind::Refining, "sparkles", 16, "cloud", "white", 0.8 },
        { Kind::Pasting, "doc.on.clipboard.fill", 15, "cloud", "cloud", 0.7 },
        { Kind::Done, "checkmark.circle.fill", 17, "frost", "frost", 0.8 },
        { Kind::Error, "exclamationmark.triangle.fill", 16, "smoke", "smoke", 0.8 },
    };
    const auto named = [this](const char *name) {
        return name == QLatin1String("white") ? QColor(Qt::white) : color(name);
    };
    for (const Icon &row : table) {
        SCOPED_TRACE(row.symbol);
        controller.show(row.kind == Kind::Error ? DictationState::error(QStringLiteral("No.")) : row.kind,
            AppLanguage::English);
        const QQuickItem &icon = child("icon");
        const auto value = [&icon](const char *property) { return icon.property(property); };
        EXPECT_TRUE(icon.isVisible());
        EXPECT_FALSE(child("spinner").isVisible());
        EXPECT_EQ(value("symbol").toString(), QLatin1String(row.symbol));
        EXPECT_EQ(value("pointSize").toDouble(), row.pointSize);
        EXPECT_EQ(
            value("color").value<QColor>(), QColor::fromRgbF(1, 1, 1, row.kind == Kind::Idle ? 0.9F : 1.0F));
        EXPECT_EQ(value("accent").value<QColor>(), named(row.accent));
        EXPECT_NEAR(value("accentOpacity").toDouble(), row.kind == Kind::Recording ? 0.36 : 0.15, 1e-6);
        EXPECT_EQ(value("glow").value<QColor>(), named(row.glow));
        EXPECT_NEAR(value("glowOpacity").toDouble(), row.glowOpacity, 1e-6);
        EXPECT_EQ(value("glowRadius").toDouble(), row.kind == Kind::Recording ? 5 : 4);
    }
}

TEST_F(OverlayWindowTest, TheVoiceLightsTheMicrophoneUp) {
    controller.show(Kind::Recording, AppLanguage::English);
    controller.updateAudioLevel(1);
    const auto value = [this](const char *property) { return child("icon").property(property).toDouble(); };
    EXPECT_TRUE(untilTrue([&] { return std::abs(value("glowOpacity") - 0.52) < 0.001; }));
    EXPECT_NEAR(value("accentOpacity"), 0.56, 0.001);
    EXPECT_TRUE(untilTrue([&] { return std::abs(value("symbolScale") - 1.06) < 0.001; }));
}

TEST_F(OverlayWindowTest, TranscribingTurnsASpinnerWithItsShadows) {
    controller.show(Kind::Transcribing, AppLanguage::English);
    EXPECT_FALSE(child("icon").isVisible());
    const QQuickItem &spinner = child("spinner");
    EXPECT_TRUE(spinner.isVisible());
    EXPECT_EQ(spinner.property("color").value<QColor>(), color("frost"));
    QStringList shadows;
    for (const QQuickItem *each : spinner.parentItem()->childItems()) {
        const double blur = each->property("blur").toDouble();
        if (blur > 0 && each->isVisible()) {
            shadows.append(QStringLiteral("%1 %2 radius %3 down %4")
                               .arg(each->property("color").value<QColor>().name())
                               .arg(each->opacity())
                               .arg(blur)
                               .arg(each->y() + each->height() / 2 - spinner.y() - spinner.height() / 2));
        }
    }
    EXPECT_EQ(shadows.join(u'\n').toStdString(),
        QStringLiteral("#000000 0.28 radius 4 down 2\n%1 0.15 radius 8 down 3\n#000000 0.33 radius 2 down 0")
            .arg(color("cloud").name())
            .toStdString());
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
