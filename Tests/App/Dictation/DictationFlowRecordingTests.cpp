#include "App/Dictation/DictationFlowFixture.h"

#include "TolmiApp/Audio/AudioMeterMath.h"
#include "TolmiApp/Audio/AudioRecorderError.h"
#include "TolmiApp/Texts/L10n.h"

class DictationFlowRecording : public DictationFlowFixture {
protected:
    DictationFlowRecording() { createSetUp(); }

    static std::exception_ptr recorderError() {
        return std::make_exception_ptr(AudioRecorderError(AudioRecorderError::Kind::CouldNotStartRecording));
    }
    static std::exception_ptr otherError(const char *description) {
        return std::make_exception_ptr(failure(description));
    }
    QString romanian(L10n::Key key) const { return L10n::text(key, AppLanguage::Romanian); }

    /// What an error shows from its beginning to its end.
    QStringList errorLines(const QString &message) const {
        const QString error = QStringLiteral("Error(%1)").arg(message);
        return { "state " + error, "overlay.make", "overlay.show " + error + " ro",
            "sound.sync " + error + " hero 0.45", "state Idle", "overlay.hide", "sound.sync Idle hero 0.45" };
    }
};

TEST_F(DictationFlowRecording, StartsWithTheLiveCaptureInOrder) {
    record();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "recorder.requestPermission", "live.warmup", "live.start", "firstPassScore 0",
            "usedFallback false", "state Recording", "overlay.make", "overlay.show Recording ro",
            "sound.sync Recording hero 0.45" }));
    ASSERT_EQ(fakes.live->startedURLs.size(), 1U);
    EXPECT_EQ(fakes.live->startedURLs[0].deletingLastPathComponent(), audioCacheURL());
    EXPECT_EQ(fakes.live->startedURLs[0].pathExtension(), "wav");
}

TEST_F(DictationFlowRecording, AnnouncesTheStateWhileTheOldOneIsReadable) {
    QStringList seen;
    QObject::connect(manager.get(), &DictationFlowManager::stateWillChange,
        [&](const DictationState &next) { seen << describe(manager->state()) + " to " + describe(next); });
    record();
    EXPECT_EQ(seen, QStringList({ "Idle to Recording" }));
}

TEST_F(DictationFlowRecording, RefusedMicrophoneIsAnErrorForThreeSeconds) {
    fakes.recorder->permission.give(false);
    keyDown();
    clock.advance(2.99);
    EXPECT_EQ(manager->state(), DictationState::error(romanian(L10n::Key::stateMicDenied)));
    clock.advance(0.01);
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "recorder.requestPermission" }) + errorLines(romanian(L10n::Key::stateMicDenied)));
}

TEST_F(DictationFlowRecording, ErrorsSpeakTheLanguageOfTheInterface) {
    settings->setUiLanguage(AppLanguage::English);
    fakes.recorder->permission.give(false);
    keyDown();
    EXPECT_EQ(manager->state().message(), L10n::text(L10n::Key::stateMicDenied, AppLanguage::English));
}

TEST_F(DictationFlowRecording, FailsWithTheSecondBackEnd) {
    const struct {
        std::exception_ptr liveFailure;
        std::exception_ptr recorderFailure;
        QString message;
        const char *logged;
    } rows[] = {
        { otherError("engine"), recorderError(), romanian(L10n::Key::stateRecordingStartFailed), "engine" },
        { otherError("engine"), otherError("no device"), QStringLiteral("no device"), "engine" },
        { recorderError(), otherError("disk"), QStringLiteral("disk"),
            "Could not start microphone recording." },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.message.toStdString());
        fakes.live->startFailures = { row.liveFailure };
        fakes.recorder->startFailures = { row.recorderFailure };
        fakes.recorder->permission.give(true);
        const QString logged = loggedBy([this] { keyDown(); });
        EXPECT_EQ(manager->state(), DictationState::error(row.message));
        EXPECT_EQ(logged,
            QStringLiteral(
                "Tolmi: Live pre-roll capture failed, falling back to AVAudioRecorder. Error: %1\n")
                .arg(QString::fromLatin1(row.logged)));
        EXPECT_EQ(fakes.live->startedURLs.back(), fakes.recorder->startedURLs.back());
        keyUp();
        EXPECT_EQ(manager->state().kind(), Kind::Error) << "a key-up must not touch the error";
        clock.advance(3);
        EXPECT_EQ(manager->state(), Kind::Idle);
    }
    EXPECT_EQ(fakes.journal.only({ "live.stop", "recorder.stop", "transcriber" }), QStringList());
    EXPECT_EQ(fakes.journal.count(QStringLiteral("overlay.make")), 1);
}

TEST_F(DictationFlowRecording, FailsWithoutAFile) {
    fakes.sweeps->waitForCalls(1);
    fileManager.createDirectoryFailures.push_back(failure("read-only file system"));
    fakes.recorder->permission.give(true);
    keyDown();
    clock.advance(3);
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "recorder.requestPermission", "live.warmup" })
            + errorLines(QStringLiteral("read-only file system")));
}

TEST_F(DictationFlowRecording, FallsBackToTheRecorderUnseen) {
    fakes.live->startFailures = { otherError("engine") };
    fakes.recorder->permission.give(true);
    const QString logged = loggedBy([this] { keyDown(); });
    EXPECT_EQ(
        logged, "Tolmi: Live pre-roll capture failed, falling back to AVAudioRecorder. Error: engine\n");
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "recorder.requestPermission", "live.warmup", "live.start", "recorder.start",
            "firstPassScore 0", "usedFallback false", "state Recording", "overlay.make",
            "overlay.show Recording ro", "sound.sync Recording hero 0.45" }));
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(fakes.journal.only({ "live.stop", "recorder.stop" }), QStringList({ "recorder.stop" }));
}

class DictationFlowRefusedStart : public DictationFlowRecording,
                                  public testing::WithParamInterface<DictationState::Kind> { };

TEST_P(DictationFlowRefusedStart, ChangesNothing) {
    reach(GetParam());
    ASSERT_EQ(manager->state().kind(), GetParam());
    fakes.journal.lines.clear();
    keyDown();
    EXPECT_EQ(fakes.journal.lines, QStringList());
    EXPECT_EQ(manager->state().kind(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(EveryBusyState, DictationFlowRefusedStart,
    testing::Values(DictationState::Kind::Recording, DictationState::Kind::Transcribing,
        DictationState::Kind::OptimizingQuality, DictationState::Kind::Refining,
        DictationState::Kind::Error));

TEST_F(DictationFlowRecording, IsAllowedInTheDoneStateAndForgetsTheScore) {
    settings->setRefinementEnabled(false);
    record();
    AdaptiveTranscriptionOutcome second = outcome("text");
    second.usedFallback = true;
    fakes.transcriber->outcomes.give(second);
    keyUp();
    ASSERT_EQ(manager->state(), Kind::Done);
    ASSERT_TRUE(manager->usedFallback());
    record();
    EXPECT_EQ(manager->firstPassScore(), 0);
    EXPECT_FALSE(manager->usedFallback());
    EXPECT_EQ(manager->lastTranscript(), "text");
}

TEST_F(DictationFlowRecording, IgnoresAKeyUpDuringThePermissionWait) {
    fakes.recorder->permission.suspend();
    keyDown();
    keyUp();
    EXPECT_EQ(fakes.journal.lines, QStringList({ "recorder.requestPermission" }));
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(manager->state(), Kind::Recording);
    clock.advance(5);
    EXPECT_EQ(manager->state(), Kind::Recording);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(manager->state(), Kind::Transcribing);
}

TEST_F(DictationFlowRecording, GoesOnTwiceAfterOverlappingStarts) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyDown();
    ASSERT_EQ(fakes.recorder->permission.waitingCount(), 2U);
    fakes.recorder->permission.answer(true);
    fakes.recorder->permission.answer(true);
    EXPECT_EQ(states(), QStringList({ "state Recording", "state Recording" }));
    ASSERT_EQ(fakes.live->startedURLs.size(), 2U);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    ASSERT_EQ(fakes.transcriber->requests.size(), 1U);
    EXPECT_EQ(fakes.transcriber->requests[0].audioFileURL, fakes.live->startedURLs[1]);
}

TEST_F(DictationFlowRecording, TheTimerOfAnErrorLeavesARecordingAlone) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyDown();
    fakes.recorder->permission.answer(false);
    clock.advance(1);
    fakes.recorder->permission.answer(true);
    clock.advance(3);
    EXPECT_EQ(manager->state(), Kind::Recording);
}

TEST_F(DictationFlowRecording, TheFirstTimerEndsALaterError) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyDown();
    fakes.recorder->permission.answer(false);
    clock.advance(1);
    fakes.recorder->permission.answer(false);
    clock.advance(2);
    EXPECT_EQ(manager->state(), Kind::Idle);
    clock.advance(1);
    EXPECT_EQ(states().count("state Idle"), 1);
}

TEST_F(DictationFlowRecording, LogsASlowStart) {
    const struct {
        double seconds;
        const char *logged;
    } rows[] = {
        { 0.0, "" },
        { 0.349, "" },
        { 0.351, "Tolmi: recording start latency 0.35s\n" },
        { 1.236, "Tolmi: recording start latency 1.24s\n" },
        { 100, "Tolmi: recording start latency 100.00s\n" },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.seconds);
        fakes.recorder->permission.suspend();
        keyDown();
        clock.advance(row.seconds);
        const QString logged = loggedBy([this] { fakes.recorder->permission.answer(true); });
        EXPECT_EQ(logged, row.logged);
        ASSERT_EQ(manager->state(), Kind::Recording);
        fakes.transcriber->outcomes.give(outcome(QString()));
        keyUp();
        clock.advance(2);
    }
}

class DictationFlowSlowStart : public DictationFlowRecording {
protected:
    /// Key-down with a microphone that gives nothing yet.
    DictationFlowSlowStart() {
        fakes.live->preparation.emplace().suspend();
        fakes.recorder->permission.give(true);
        keyDown();
    }
};

TEST_F(DictationFlowSlowStart, LeavesTheStateUntilTheMicrophoneIsThere) {
    EXPECT_EQ(fakes.journal.lines, QStringList({ "recorder.requestPermission", "live.warmup" }));
    EXPECT_EQ(manager->state(), Kind::Idle);
    keyDown();
    EXPECT_EQ(fakes.journal.count("recorder.requestPermission"), 1) << "a start is under way";
    fakes.live->preparation->answer(true);
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Recording);
}

TEST_F(DictationFlowSlowStart, AKeyUpMeanwhileEndsTheRecordingOnceItHasBegun) {
    keyUp();
    EXPECT_EQ(states(), QStringList());
    fakes.transcriber->outcomes.suspend();
    fakes.live->preparation->answer(true);
    clock.runPosted();
    EXPECT_EQ(states(), QStringList({ "state Recording", "state Transcribing" }));
    EXPECT_EQ(fakes.journal.count("live.stop"), 1);
}

TEST_F(DictationFlowSlowStart, AFailureShowsAndTheNextPressStartsAnew) {
    keyUp();
    fakes.recorder->startFailures = { otherError("no sound") };
    loggedBy([this] { fakes.live->preparation->answerFailure(failure("engine")); });
    clock.runPosted();
    EXPECT_EQ(manager->state(), DictationState::error("no sound"));
    EXPECT_TRUE(fakes.live->startedURLs.empty());
    clock.advance(3);
    fakes.live->preparation->give(true);
    record();
}

TEST_F(DictationFlowRecording, ALostMicrophoneShowsAnErrorAndKeepsTheRecording) {
    record();
    fakes.journal.lines.clear();
    fakes.live->onSoundLost();
    const QString message = L10n::text(L10n::Phrase::recordingSoundLost, AppLanguage::Romanian);
    EXPECT_EQ(manager->state(), DictationState::error(message));
    EXPECT_EQ(fakes.journal.lines.first(), "live.stop");
    keyUp();
    EXPECT_EQ(manager->state(), DictationState::error(message));
    EXPECT_TRUE(fakes.transcriber->requests.empty());
    clock.advance(3);
    EXPECT_EQ(manager->state(), Kind::Idle);
    fakes.live->onSoundLost();
    EXPECT_EQ(manager->state(), Kind::Idle);
    record();
}

TEST_F(DictationFlowRecording, StaysAliveForTheResetOfAnError) {
    fakes.recorder->permission.give(false);
    keyDown();
    manager.reset();
    EXPECT_FALSE(weakManager.expired());
    clock.advance(3);
    EXPECT_EQ(fakes.journal.lines.last(), "sound.sync Idle hero 0.45");
    EXPECT_TRUE(weakManager.expired());
}

class DictationFlowMetering : public DictationFlowRecording {
protected:
    /// The peak that a recording stopped now would be judged by.
    double peakAtKeyUp() {
        fakes.transcriber->outcomes.suspend();
        keyUp();
        return fakes.transcriber->requests.back().peakLevel;
    }
};

TEST_F(DictationFlowMetering, TakesTheFirstSampleAtOnceAndThenEveryTwentyMilliseconds) {
    fakes.live->level = 0.5;
    record();
    EXPECT_EQ(audioLevels, std::vector<double>({ 0, 0.17 }));
    clock.advance(0.019);
    EXPECT_EQ(audioLevels.size(), 2U);
    clock.advance(0.001);
    ASSERT_EQ(audioLevels.size(), 3U);
    EXPECT_DOUBLE_EQ(audioLevels[2], 0.2822);
    clock.advance(0.2);
    EXPECT_EQ(audioLevels.size(), 13U);
    EXPECT_EQ(fakes.overlay->levels, audioLevels);
}

TEST_F(DictationFlowMetering, ShowsNothingBeforeTheStateIsShown) {
    fakes.live->level = 0.5;
    fakes.recorder->permission.give(true);
    launch(manager->startDictation());
    EXPECT_EQ(audioLevels, std::vector<double>({ 0 }));
    clock.runPosted();
    EXPECT_EQ(audioLevels.size(), 2U);
}

TEST_F(DictationFlowMetering, FallsSlowlyAndKeepsTheRawPeak) {
    fakes.live->level = 0.9;
    record();
    fakes.live->level = 0.1;
    clock.advance(0.02);
    const double risen = AudioMeterMath::smoothedLevel(0, 0.9);
    EXPECT_DOUBLE_EQ(manager->audioLevel(), AudioMeterMath::smoothedLevel(risen, 0.1));
    EXPECT_EQ(peakAtKeyUp(), 0.9);
}

TEST_F(DictationFlowMetering, ANewRecordingBeginsWithoutPeak) {
    settings->setRefinementEnabled(false);
    fakes.live->level = 0.9;
    dictate("text");
    clock.advance(2);
    fakes.live->level = 0.2;
    record();
    EXPECT_EQ(peakAtKeyUp(), 0.2);
}

TEST_F(DictationFlowMetering, AnOverlappingStartForgetsThePeak) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyDown();
    fakes.live->level = 0.9;
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    fakes.live->level = 0.2;
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    EXPECT_EQ(peakAtKeyUp(), 0.2);
}

TEST_F(DictationFlowMetering, TheLevelIsZeroAtKeyUpAtOnce) {
    fakes.live->level = 0.9;
    record();
    clock.advance(0.1);
    ASSERT_GT(manager->audioLevel(), 0.5);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    EXPECT_EQ(manager->audioLevel(), 0);
    EXPECT_EQ(fakes.overlay->levels.back(), 0);
}

TEST_F(DictationFlowMetering, EndsWithTheRecording) {
    record();
    fakes.transcriber->outcomes.suspend();
    keyUp();
    const size_t count = audioLevels.size();
    clock.advance(1);
    EXPECT_EQ(audioLevels.size(), count);
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}

TEST_F(DictationFlowMetering, ASecondLoopReplacesTheFirst) {
    fakes.recorder->permission.suspend();
    fakes.recorder->permission.suspend();
    keyDown();
    keyDown();
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    clock.advance(0.1);
    EXPECT_EQ(clock.pendingCallCount(), 1U);
}

TEST_F(DictationFlowMetering, ThePeakOfTheLiveCaptureLastsUntilIdle) {
    fakes.live->preRollPeak = 0.3;
    record();
    EXPECT_EQ(manager->currentPreRollPeak(), 0.3);
    fakes.live->preRollPeak = 0.6;
    clock.advance(0.02);
    EXPECT_EQ(manager->currentPreRollPeak(), 0.6);
    fakes.live->preRollPeak = 0.9;
    fakes.transcriber->outcomes.give(outcome(QString()));
    keyUp();
    EXPECT_EQ(manager->state(), Kind::Done);
    EXPECT_EQ(manager->currentPreRollPeak(), 0.6);
    clock.advance(2);
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_EQ(manager->currentPreRollPeak(), 0);
}

TEST_F(DictationFlowMetering, TheRecorderHasALevelButNoPreRoll) {
    fakes.live->startFailures = { otherError("engine") };
    fakes.live->level = 0.9;
    fakes.live->preRollPeak = 0.3;
    fakes.recorder->level = 0.5;
    loggedBy([this] { record(); });
    EXPECT_EQ(manager->audioLevel(), 0.17);
    EXPECT_EQ(manager->currentPreRollPeak(), 0.3) << "the start looks at the live capture all the same";
    fakes.live->preRollPeak = 0.7;
    clock.advance(0.02);
    EXPECT_EQ(manager->currentPreRollPeak(), 0.3);
    EXPECT_EQ(peakAtKeyUp(), 0.5);
}

TEST_F(DictationFlowMetering, HoldsTheManagerOnceLoaded) {
    record();
    manager.reset();
    clock.advance(1);
    EXPECT_FALSE(weakManager.expired());
}

TEST_F(DictationFlowMetering, DoesNotStartForAManagerThatHasGone) {
    fakes.recorder->permission.give(true);
    launch(manager->startDictation());
    manager.reset();
    EXPECT_TRUE(weakManager.expired());
    clock.runPosted();
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}
