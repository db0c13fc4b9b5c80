#include "TolmiApp/Popup/MenuBarPopupWindow.h"

#include "Support/FakeFloatingWindows.h"
#include "Support/FakePasteboard.h"
#include "Support/FlowManagerFixture.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Popup/MenuBarPopupModel.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "Views/ViewsFixture.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QScreen>

namespace {

class MenuBarPopupWindowTest : public ViewsFixture {
protected:
    MenuBarPopupWindowTest() {
        flow.store.setRefinementEnabled(false);
        flow.setUp();
    }

    bool isShown() { return popup.window() != nullptr && popup.window()->isVisible(); }

    void show() {
        popup.toggle(item);
        ASSERT_TRUE(isShown());
        ASSERT_TRUE(untilTrue([this] { return popup.window()->isActive(); }));
    }

    /// Another window takes the keyboard, as it does when it is pressed.
    void pressElsewhere() {
        elsewhere.show();
        elsewhere.requestActivate();
        ASSERT_TRUE(untilTrue([this] { return !isShown(); }));
    }

    const QRect item { 500, 4, 24, 24 };
    FlowManagerFixture flow;
    FakePasteboard pasteboard;
    FakeFloatingWindows floatingWindows;
    QList<QQmlEngine *> prepared;
    MenuBarPopupModel model { flow.flow, pasteboard, {} };
    ViewTexts texts { flow.store, PlatformTexts::forLinux() };
    MenuBarPopupWindow popup { { model, texts, floatingWindows, flow.clock,
        [this](QQmlEngine &each) { prepared.append(&each); } } };
    QWindow elsewhere;
};

} // namespace

TEST_F(MenuBarPopupWindowTest, LoadsNothingBeforeItIsShown) {
    EXPECT_EQ(popup.window(), nullptr);
    EXPECT_TRUE(prepared.isEmpty());
    EXPECT_EQ(floatingWindows.preparedCount, 0);
    popup.close();
    EXPECT_EQ(popup.window(), nullptr);
    show();
    popup.toggle(item);
    show();
    EXPECT_EQ(prepared.size(), 1);
    EXPECT_EQ(floatingWindows.preparedCount, 1);
}

TEST_F(MenuBarPopupWindowTest, StandsUnderTheItem) {
    show();
    EXPECT_EQ(popup.frame().width(), 320);
    EXPECT_EQ(popup.frame().x(), 500 + 12 - 160);
    EXPECT_EQ(popup.frame().y(), 4 + 24 + 6);
}

TEST_F(MenuBarPopupWindowTest, StandsAtThePointerWhereTheItemHasNoPlace) {
    QCursor::setPos(300, 100);
    popup.toggle(std::nullopt);
    ASSERT_TRUE(isShown());
    EXPECT_EQ(popup.frame().topLeft(), QPoint(300 - 159, 107));
}

TEST_F(MenuBarPopupWindowTest, AnswersThePointerWithoutItsShadow) {
    show();
    const auto &[touched, drawn] = floatingWindows.shapes.constLast();
    EXPECT_EQ(touched.frame.translated(popup.window()->position()), popup.frame());
    EXPECT_EQ(drawn.frame, touched.frame);
    EXPECT_EQ(touched.radius, 12);
}

TEST_F(MenuBarPopupWindowTest, IsTransparentAroundThePopup) {
    show();
    EXPECT_TRUE(popup.window()->flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(popup.window()->color(), QColor(Qt::transparent));
    EXPECT_FALSE(popup.window()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

TEST_F(MenuBarPopupWindowTest, GoesWithTheKeyboard) {
    show();
    pressElsewhere();
}

TEST_F(MenuBarPopupWindowTest, GoesWhenSomethingElseIsPressed) {
    show();
    floatingWindows.pressElsewhere();
    EXPECT_FALSE(isShown());
    // The press of the item itself, which is told first as one elsewhere.
    popup.toggle(item);
    EXPECT_FALSE(isShown());
    popup.toggle(item);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarPopupWindowTest, GoesBeforeADictationIsPasted) {
    flow.record();
    show();
    flow.transcribe();
    EXPECT_FALSE(isShown());
}

TEST_F(MenuBarPopupWindowTest, OneOpenedDuringTheTranscriptionGoesToo) {
    bool isShownAtThePaste = true;
    QObject::connect(flow.flow.get(), &DictationFlowManager::stateChanged, &popup, [&] {
        if (flow.flow->state().kind() == DictationState::Kind::Transcribing)
            popup.toggle(item);
        if (flow.flow->state().kind() == DictationState::Kind::Pasting)
            isShownAtThePaste = isShown();
    });
    flow.dictate(QStringLiteral("Move the review to Thursday."));
    EXPECT_FALSE(isShownAtThePaste);
    EXPECT_FALSE(isShown());
}

TEST_F(MenuBarPopupWindowTest, ThePressThatTookTheKeyboardDoesNotOpenItAgain) {
    show();
    pressElsewhere();
    flow.clock.shift(0.2);
    popup.toggle(item);
    EXPECT_FALSE(isShown());
    popup.toggle(item);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarPopupWindowTest, ALaterPressDoes) {
    show();
    pressElsewhere();
    flow.clock.shift(0.5);
    popup.toggle(item);
    EXPECT_TRUE(isShown());
}

TEST_F(MenuBarPopupWindowTest, ASecondPressHides) {
    show();
    popup.toggle(item);
    EXPECT_FALSE(isShown());
}

TEST_F(MenuBarPopupWindowTest, EscapeHides) {
    show();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(popup.window(), &press);
    EXPECT_FALSE(isShown());
}

TEST_F(MenuBarPopupWindowTest, OneThatGrowsStaysAtItsItem) {
    const QScreen *const screen = QGuiApplication::primaryScreen();
    const QRect below(500, screen->geometry().bottom() - 24, 24, 24);
    popup.toggle(below);
    const QRect before = popup.frame();
    flow.fakes.hotkey->isTrusted = false;
    flow.flow->requestAccessibility();
    flow.clock.advance(1);
    ASSERT_TRUE(untilTrue([&] { return popup.frame().height() > before.height(); }));
    EXPECT_EQ(popup.frame().bottom(), before.bottom());
    EXPECT_EQ(floatingWindows.shapes.constLast().first.frame.size(), popup.frame().size());
}

TEST_F(MenuBarPopupWindowTest, HiddenOneDrawsNothing) {
    flow.record();
    flow.transcribe();
    show();
    int frames = 0;
    QObject::connect(popup.window(), &QQuickWindow::frameSwapped, popup.window(), [&frames] { ++frames; });
    ASSERT_TRUE(untilTrue([&] { return frames > 2; })) << "the spinner turns";
    popup.toggle(item);
    QCoreApplication::processEvents();
    frames = 0;
    for (int turn = 0; turn < 50; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_EQ(frames, 0);
}
