#include "TolmiApp/Overlay/OverlayPanel.h"

#include "Support/FakeOverlayWindow.h"

#include <gtest/gtest.h>

using Kind = DictationState::Kind;

namespace {

class OverlayPanelTest : public testing::Test {
protected:
    FakeOverlayWindow *panel = nullptr;
    OverlayViewModel *model = nullptr;
    std::unique_ptr<OverlayPanelController> controller
        = std::make_unique<OverlayPanelController>([this](OverlayViewModel &viewModel) {
              auto window = std::make_unique<FakeOverlayWindow>();
              panel = window.get();
              model = &viewModel;
              return window;
          });
};

} // namespace

TEST_F(OverlayPanelTest, StartsHiddenIdleAndSilent) {
    EXPECT_TRUE(panel->calls.isEmpty());
    EXPECT_EQ(model->state(), DictationState(Kind::Idle));
    EXPECT_EQ(model->language(), AppLanguage::Romanian);
    EXPECT_EQ(model->audioLevel(), 0);
    EXPECT_EQ(model->helpMessage(), QString());
}

TEST_F(OverlayPanelTest, ShowPlacesThePanelUnderTheTopEdge) {
    controller->show(Kind::Recording, AppLanguage::English);
    EXPECT_EQ(panel->calls, QStringList({ QStringLiteral("origin 885,38"), QStringLiteral("front") }));
    EXPECT_EQ(model->state(), DictationState(Kind::Recording));
    EXPECT_EQ(model->language(), AppLanguage::English);
}

TEST_F(OverlayPanelTest, ShowTwiceFollowsTheMainScreen) {
    controller->show(Kind::Done, AppLanguage::English);
    panel->frame = QRect(1920, 0, 1280, 1024);
    controller->show(Kind::Done, AppLanguage::English);
    EXPECT_EQ(panel->calls.value(2), QStringLiteral("origin 2485,8"));
}

TEST_F(OverlayPanelTest, WithoutAScreenThePanelKeepsItsPlace) {
    panel->frame.reset();
    controller->show(Kind::Done, AppLanguage::English);
    EXPECT_EQ(panel->calls, QStringList({ QStringLiteral("front") }));
}

TEST_F(OverlayPanelTest, OnlyRecordingKeepsTheLevel) {
    controller->updateAudioLevel(0.5);
    controller->show(Kind::Recording, AppLanguage::English);
    EXPECT_EQ(model->audioLevel(), 0.5);
    controller->show(Kind::Transcribing, AppLanguage::English);
    EXPECT_EQ(model->audioLevel(), 0);
}

TEST_F(OverlayPanelTest, LevelsAreLimited) {
    controller->updateAudioLevel(1.5);
    EXPECT_EQ(model->audioLevel(), 1);
    controller->updateAudioLevel(-0.5);
    EXPECT_EQ(model->audioLevel(), 0);
}

TEST_F(OverlayPanelTest, HideFadesAndKeepsTheState) {
    controller->show(Kind::Recording, AppLanguage::English);
    controller->updateAudioLevel(0.5);
    panel->calls.clear();
    controller->hide();
    EXPECT_EQ(panel->calls, QStringList({ QStringLiteral("fade 0.25") }));
    EXPECT_EQ(model->audioLevel(), 0);
    EXPECT_EQ(model->state(), DictationState(Kind::Recording));
    panel->completions.takeFirst()();
    EXPECT_EQ(panel->calls.last(), QStringLiteral("out"));
}

TEST_F(OverlayPanelTest, OldFadeTakesANewlyShownPanelAway) {
    controller->hide();
    controller->show(Kind::Recording, AppLanguage::English);
    panel->completions.takeFirst()();
    EXPECT_EQ(panel->calls.last(), QStringLiteral("out"));
}

TEST_F(OverlayPanelTest, FadeThatOutlivesTheControllerDoesNothing) {
    controller->hide();
    const auto completion = panel->completions.takeFirst();
    controller.reset();
    completion();
}

TEST_F(OverlayPanelTest, HelpMessagesNameTheState) {
    const std::tuple<DictationState, const char16_t *, const char16_t *> table[] {
        { Kind::Idle, u"", u"" },
        { Kind::Recording, u"Listening...", u"Ascult..." },
        { Kind::Transcribing, u"Transcribing...", u"Transcriu..." },
        { Kind::OptimizingQuality, u"Optimizing quality...", u"Optimizez calitatea..." },
        { Kind::Refining, u"Refining...", u"Rafinez..." },
        { Kind::Pasting, u"Pasting...", u"Lipesc..." },
        { Kind::Done, u"Done", u"Finalizat" },
        { DictationState::error(QStringLiteral("No microphone.")), u"No microphone.", u"No microphone." },
    };
    for (const auto &[state, english, romanian] : table) {
        controller->show(state, AppLanguage::English);
        EXPECT_EQ(model->helpMessage(), QString::fromUtf16(english));
        controller->show(state, AppLanguage::Romanian);
        EXPECT_EQ(model->helpMessage(), QString::fromUtf16(romanian));
    }
}
