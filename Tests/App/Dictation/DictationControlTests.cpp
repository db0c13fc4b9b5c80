#include "TolmiApp/Dictation/DictationControl.h"

#include "App/Studio/StudioFixture.h"
#include "Support/SignalCounter.h"

#include <QMetaEnum>

namespace {

using Kind = DictationState::Kind;
using Tone = DictationControl::Tone;

class DictationControlTest : public StudioFixture {
protected:
    void SetUp() override {
        createSetUp();
        control.emplace(manager, clock);
    }
    // The fixture's end wants nobody to hold the flow.
    void TearDown() override { control.reset(); }

    void press() {
        control->runAction();
        clock.runPosted();
    }

    std::optional<DictationControl> control;
};

struct Look {
    Kind kind;
    const char *icon;
    Tone tone;
    const char *label;
    const char *processingMessage;
};

void PrintTo(const Look &look, std::ostream *stream) {
    *stream << look.label;
}

class DictationControlLook : public DictationControlTest, public testing::WithParamInterface<Look> {
protected:
    void expectLook() {
        const Look &look = GetParam();
        EXPECT_EQ(manager->state().kind(), look.kind);
        EXPECT_EQ(control->stateIcon(), QString::fromLatin1(look.icon));
        EXPECT_EQ(control->stateTone(), look.tone);
        EXPECT_EQ(control->stateLabel(), QString::fromLatin1(look.label));
        EXPECT_EQ(control->processingMessage(), QString::fromLatin1(look.processingMessage));
        EXPECT_EQ(control->isProcessing(), look.tone == Tone::Neutral);
        EXPECT_EQ(control->isRecording(), look.kind == Kind::Recording);
        EXPECT_EQ(control->buttonTitle(),
            look.kind == Kind::Recording ? QStringLiteral("Stop + Transcribe")
                                         : QStringLiteral("Start Recording"));
    }
};

constexpr const char *waitMessage = "Processing... wait for current transcription to finish.";

} // namespace

TEST_P(DictationControlLook, FollowsTheState) {
    if (GetParam().kind == Kind::Pasting) {
        int pastes = 0;
        fakes.paster->duringPaste = [&] {
            ++pastes;
            expectLook();
        };
        dictate(QStringLiteral("text"));
        EXPECT_EQ(pastes, 1);
        return;
    }
    settings->setRefinementEnabled(true);
    manager->configureRefiner();
    reach(GetParam().kind);
    expectLook();
}

INSTANTIATE_TEST_SUITE_P(States, DictationControlLook,
    testing::Values(Look { Kind::Idle, "checkmark.seal.fill", Tone::Success, "Ready", "" },
        Look { Kind::Recording, "waveform.circle.fill", Tone::Accent, "Recording", "" },
        Look { Kind::Transcribing, "hourglass", Tone::Neutral, "Transcribing", waitMessage },
        Look { Kind::OptimizingQuality, "hourglass", Tone::Neutral, "Optimizing quality...",
            "Optimizing quality..." },
        Look { Kind::Refining, "hourglass", Tone::Neutral, "Refining", waitMessage },
        Look { Kind::Pasting, "hourglass", Tone::Neutral, "Pasting", waitMessage },
        Look { Kind::Done, "checkmark.circle.fill", Tone::Success, "Done", "" },
        Look { Kind::Error, "exclamationmark.triangle.fill", Tone::Danger, "Error", "" }),
    [](const auto &info) {
        return QMetaEnum::fromType<DictationState::Kind>().valueToKey(int(info.param.kind));
    });

TEST_F(DictationControlTest, TellsTheErrorUntilItIsOver) {
    EXPECT_EQ(control->errorMessage(), QString());
    reach(Kind::Error);
    EXPECT_EQ(control->errorMessage(), QStringLiteral("Microphone access denied"));
    clock.advance(3);
    EXPECT_EQ(control->errorMessage(), QString());
}

TEST_F(DictationControlTest, FollowsTheLanguage) {
    SignalCounter changes(&*control, &DictationControl::stateChanged);
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(control->stateLabel(), QStringLiteral("Gata"));
    EXPECT_EQ(control->buttonTitle(), QStringLiteral("Porneste inregistrarea"));
}

TEST_F(DictationControlTest, FollowsTheLevelOfTheVoice) {
    fakes.live->level = 1;
    SignalCounter changes(&*control, &DictationControl::audioLevelChanged);
    record();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_DOUBLE_EQ(control->audioLevel(), 0.34);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(control->audioLevel(), 0);
}

TEST_F(DictationControlTest, PressStartsAndStopsInALaterTurn) {
    fakes.recorder->permission.give(true);
    control->runAction();
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_TRUE(control->isRunningAction());
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_FALSE(control->isRunningAction());

    fakes.transcriber->outcomes.give(outcome(QStringLiteral("text")));
    press();
    EXPECT_EQ(manager->state(), Kind::Done);
    EXPECT_EQ(history->entries().size(), 1);
}

TEST_F(DictationControlTest, DoublePressStartsOnce) {
    fakes.recorder->permission.suspend();
    press();
    press();
    EXPECT_EQ(fakes.journal.count(QStringLiteral("recorder.requestPermission")), 1);
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_FALSE(control->isRunningAction());
}

TEST_F(DictationControlTest, PressWhileProcessingDoesNothing) {
    for (const Kind kind : { Kind::Transcribing, Kind::OptimizingQuality }) {
        reach(kind);
        control->runAction();
        EXPECT_FALSE(control->isRunningAction());
        fakes.transcriber->outcomes.answer(outcome(QString()));
        clock.advance(2);
        EXPECT_EQ(manager->state(), Kind::Idle);
    }
}

TEST_F(DictationControlTest, PressInAnErrorDoesNothing) {
    reach(Kind::Error);
    press();
    EXPECT_EQ(manager->state().kind(), Kind::Error);
    EXPECT_FALSE(control->isRunningAction());
    EXPECT_EQ(fakes.journal.count(QStringLiteral("recorder.requestPermission")), 1);
}

TEST_F(DictationControlTest, PressAfterADictationOfTheKeyStartsTheNext) {
    reach(Kind::Done);
    fakes.recorder->permission.give(true);
    press();
    EXPECT_EQ(manager->state(), Kind::Recording);
}

TEST_F(DictationControlTest, PressWaitsForTheEndOfADictationOfTheButton) {
    record();
    fakes.transcriber->outcomes.give(outcome(QStringLiteral("text")));
    press();
    EXPECT_EQ(manager->state(), Kind::Done);
    EXPECT_TRUE(control->isRunningAction());
    press();
    EXPECT_EQ(manager->state(), Kind::Done);
    clock.advance(2);
    EXPECT_FALSE(control->isRunningAction());
    fakes.recorder->permission.give(true);
    press();
    EXPECT_EQ(manager->state(), Kind::Recording);
}

TEST_F(DictationControlTest, PressDiesWithTheControl) {
    control->runAction();
    control.reset();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.count(QStringLiteral("recorder.requestPermission")), 0);
}

TEST_F(DictationControlTest, DictationOutlivesTheControl) {
    record();
    fakes.transcriber->outcomes.suspend();
    press();
    control.reset();
    fakes.transcriber->outcomes.answer(outcome(QStringLiteral("text")));
    EXPECT_EQ(manager->state(), Kind::Done);
    EXPECT_EQ(history->entries().size(), 1);
}
