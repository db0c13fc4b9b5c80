#include "App/Dictation/DictationFlowFixture.h"

class DictationFlowDiscard : public DictationFlowFixture {
protected:
    DictationFlowDiscard() {
        settings->setRefinementEnabled(false);
        createSetUp();
    }

    /// A whole dictation, sound to text, that nothing before it has spoilt.
    void expectADictationWorks() {
        const size_t before = fakes.transcriber->requests.size();
        record();
        clock.advance(3);
        ASSERT_EQ(manager->state(), Kind::Recording);
        fakes.transcriber->outcomes.give(outcome(QStringLiteral("next")));
        keyUp();
        EXPECT_EQ(manager->state(), Kind::Done);
        ASSERT_EQ(fakes.transcriber->requests.size(), before + 1);
        EXPECT_EQ(fakes.transcriber->requests.back().audioFileURL, fakes.live->startedURLs.back());
    }

    QStringList captures() const {
        return fakes.journal.only({ "live.start", "live.stop", "recorder.start", "recorder.stop" });
    }
};

TEST_F(DictationFlowDiscard, EndsTheRecordingWithoutASign) {
    fakes.live->level = 0.9;
    record();
    clock.advance(0.3);
    fakes.journal.lines.clear();
    chord();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "live.stop", "state Idle", "overlay.hide", "sound.sync Idle hero 0.45" }));
    EXPECT_EQ(fakes.removed->waitFor(1), fakes.live->startedURLs);
    EXPECT_EQ(manager->audioLevel(), 0);
    EXPECT_EQ(manager->currentPreRollPeak(), 0);
    EXPECT_EQ(clock.pendingCallCount(), 1U) << "the metering's last sleep";
}

TEST_F(DictationFlowDiscard, TheKeyUpBehindItDoesNothing) {
    record();
    chord();
    fakes.journal.lines.clear();
    keyUp();
    clock.advance(5);
    EXPECT_EQ(fakes.journal.lines, QStringList());
    EXPECT_TRUE(fakes.transcriber->requests.empty());
    EXPECT_TRUE(fakes.history->added.empty());
}

TEST_F(DictationFlowDiscard, ThePressBehindItWorks) {
    record();
    chord();
    keyUp();
    expectADictationWorks();
}

TEST_F(DictationFlowDiscard, ASecondChordFindsNothing) {
    record();
    chord();
    fakes.journal.lines.clear();
    chord();
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

TEST_F(DictationFlowDiscard, DiscardsWhatTheRecorderRecords) {
    fakes.live->startFailures = { std::make_exception_ptr(failure("engine")) };
    loggedBy([this] { record(); });
    chord();
    EXPECT_EQ(captures(), QStringList({ "live.start", "recorder.start", "recorder.stop" }));
    EXPECT_EQ(fakes.removed->waitFor(1), fakes.recorder->startedURLs);
    EXPECT_EQ(manager->state(), Kind::Idle);
}

TEST_F(DictationFlowDiscard, AFileThatCannotBeRemovedIsOnlyLogged) {
    auto given = fakes.asCollaborators();
    manager.reset();
    clock.forgetPending();
    given.removeRecording = [](const FileURL &) { throw failure("read-only file system"); };
    manager = DictationFlowManager::create(given, { clock, fileManager, fakes.application }, settings);
    weakManager = manager;
    clock.runPosted();
    record();
    const QString logged = loggedBy([this, &given] {
        chord();
        EXPECT_EQ(manager->state(), Kind::Idle);
        manager.reset();
        clock.forgetPending();
    });
    EXPECT_EQ(logged, "Tolmi: a discarded recording could not be removed: read-only file system\n");
}

class DictationFlowDiscardElsewhere : public DictationFlowDiscard,
                                      public testing::WithParamInterface<DictationState::Kind> {
protected:
    DictationFlowDiscardElsewhere() { settings->setRefinementEnabled(true); }
};

TEST_P(DictationFlowDiscardElsewhere, ChangesNothing) {
    manager->configureRefiner();
    reach(GetParam());
    ASSERT_EQ(manager->state().kind(), GetParam());
    fakes.journal.lines.clear();
    chord();
    keyDown();
    if (manager->state() == Kind::Idle)
        ADD_FAILURE() << "the state is gone";
    EXPECT_EQ(fakes.journal.lines, QStringList());
    EXPECT_EQ(manager->state().kind(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(EveryBusyState, DictationFlowDiscardElsewhere,
    testing::Values(DictationState::Kind::Transcribing, DictationState::Kind::OptimizingQuality,
        DictationState::Kind::Refining, DictationState::Kind::Error));

TEST_F(DictationFlowDiscard, ChangesNothingWhereNothingWasPressed) {
    chord();
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

TEST_F(DictationFlowDiscard, LeavesTheDoneStateOfTheDictationBefore) {
    dictate(QStringLiteral("text"));
    chord();
    EXPECT_EQ(manager->state(), Kind::Done);
    EXPECT_EQ(fakes.history->added.size(), 1U);
}

TEST_F(DictationFlowDiscard, LeavesARecordingThatAButtonBegan) {
    fakes.recorder->permission.give(true);
    launch(manager->startDictation());
    clock.advance(10);
    keyDown();
    chord();
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_EQ(captures(), QStringList({ "live.start" }));
}

TEST_F(DictationFlowDiscard, AChordInTheSameTurnAsThePressDiscardsIt) {
    fakes.recorder->permission.give(true);
    fakes.hotkey->onKeyDown();
    fakes.hotkey->onChord();
    fakes.hotkey->onKeyUp();
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_EQ(captures(), QStringList({ "live.start", "live.stop" }));
    EXPECT_EQ(fakes.removed->waitFor(1), fakes.live->startedURLs);
    expectADictationWorks();
}

TEST_F(DictationFlowDiscard, AStartThatAwaitsThePermissionEndsQuietly) {
    for (const bool isGranted : { true, false }) {
        SCOPED_TRACE(isGranted);
        fakes.recorder->permission.suspend();
        keyDown();
        chord();
        keyUp();
        fakes.journal.lines.clear();
        fakes.recorder->permission.answer(isGranted);
        clock.advance(5);
        EXPECT_EQ(fakes.journal.lines, QStringList());
        EXPECT_EQ(manager->state(), Kind::Idle);
    }
    expectADictationWorks();
}

TEST_F(DictationFlowDiscard, ThePressBehindADiscardedStartCounts) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    chord();
    keyUp();
    keyDown();
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(manager->state(), Kind::Idle);
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(manager->state(), Kind::Recording);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(fakes.transcriber->requests.size(), 1U);
}

TEST_F(DictationFlowDiscard, ADiscardedPressLeavesTheStartBeforeIt) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyUp();
    keyDown();
    chord();
    fakes.recorder->permission.answer(true);
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_EQ(fakes.live->startedURLs.size(), 1U);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(manager->state(), Kind::Transcribing);
}

TEST_F(DictationFlowDiscard, WorksWhileTheDictationBeforeIsShownAsDone) {
    dictate(QStringLiteral("first"));
    clock.advance(0.5);
    record();
    clock.advance(0.3);
    chord();
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_EQ(fakes.removed->waitFor(1), std::vector { fakes.live->startedURLs.back() });
    EXPECT_EQ(manager->lastTranscript(), "first");
    // The end of the first dictation, two seconds after its paste, falls into this one.
    expectADictationWorks();
}

TEST_F(DictationFlowDiscard, WorksAfterTheEndOfTheDictationBefore) {
    dictate(QStringLiteral("first"));
    clock.advance(1.5);
    record();
    clock.advance(0.7);
    fakes.journal.lines.clear();
    chord();
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_EQ(captures(), QStringList({ "live.stop" }));
    EXPECT_EQ(fakes.removed->waitFor(1), std::vector { fakes.live->startedURLs.back() });
    keyUp();
    expectADictationWorks();
}
