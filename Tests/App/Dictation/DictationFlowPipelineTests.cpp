#include "App/Dictation/DictationFlowFixture.h"

#include "TolmiApp/Texts/L10n.h"
#include "TolmiCore/TranscriptionEngine.h"

#include <QLoggingCategory>

#include <sys/resource.h>
#include <unistd.h>

class DictationFlowPipeline : public DictationFlowFixture {
protected:
    DictationFlowPipeline() { createSetUp(); }

    /// Records at `level`, then empties the journal.
    void recordAt(double level) {
        fakes.live->level = level;
        record();
        fakes.journal.lines.clear();
    }
    /// The lines of what was published, save the level.
    QStringList published() const {
        return fakes.journal.only({ "state ", "lastTranscript ", "firstPassScore ", "usedFallback " });
    }
};

TEST_F(DictationFlowPipeline, SucceedsWithoutRefinementInThisOrder) {
    settings->setRefinementEnabled(false);
    recordAt(0.5);
    fakes.transcriber->outcomes.give(outcome("Hello"));
    keyUp();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "live.stop", "state Transcribing", "overlay.show Transcribing ro",
            "sound.sync Transcribing hero 0.45", "transcriber.transcribe", "firstPassScore 0.75",
            "usedFallback false", "lastTranscript Hello", "state Pasting", "overlay.show Pasting ro",
            "sound.sync Pasting hero 0.45", "paster.paste Hello ro", "history.add", "state Done",
            "overlay.show Done ro", "sound.sync Done hero 0.45" }));
    fakes.journal.lines.clear();
    clock.advance(1.99);
    EXPECT_EQ(fakes.journal.lines, QStringList());
    clock.advance(0.01);
    EXPECT_EQ(
        fakes.journal.lines, QStringList({ "state Idle", "overlay.hide", "sound.sync Idle hero 0.45" }));
}

TEST_F(DictationFlowPipeline, PublishesWithRefinementAndASecondPassInThisOrder) {
    recordAt(0.5);
    fakes.transcriber->outcomes.suspend();
    fakes.ollama->texts.suspend();
    keyUp();
    fakes.transcriber->announceFallback();
    EXPECT_EQ(fakes.journal.lines.mid(5),
        QStringList({ "state OptimizingQuality", "overlay.show OptimizingQuality ro",
            "sound.sync OptimizingQuality hero 0.45" }));
    fakes.transcriber->outcomes.answer({ "hello", 0.25, true, QualityPass::Fallback });
    EXPECT_EQ(manager->state(), Kind::Refining);
    fakes.ollama->texts.answer(" Hello. ");
    clock.advance(2);
    EXPECT_EQ(published(),
        QStringList(
            { "state Transcribing", "state OptimizingQuality", "firstPassScore 0.25", "usedFallback true",
                "state Refining", "lastTranscript Hello.", "state Pasting", "state Done", "state Idle" }));
    EXPECT_EQ(fakes.journal.only({ "ollama", "rules", "paster" }),
        QStringList({ "ollama.refine hello", "paster.paste Hello. ro" }));
}

TEST_F(DictationFlowPipeline, FailsWithTheTextOfTheTranscription) {
    settings->setRefinementEnabled(false);
    dictate("before");
    clock.advance(2);
    recordAt(0.5);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    fakes.transcriber->announceFallback();
    fakes.transcriber->outcomes.answerFailure(
        TranscriptionEngineError(TranscriptionEngineError::ProcessTimedOut { 3.0 }));
    clock.advance(2.99);
    EXPECT_EQ(manager->state(), DictationState::error("whisper-cli timed out after 3.0s."));
    EXPECT_EQ(manager->lastTranscript(), "before");
    EXPECT_EQ(manager->firstPassScore(), 0);
    EXPECT_FALSE(manager->usedFallback());
    clock.advance(0.01);
    EXPECT_EQ(published(),
        QStringList({ "state Transcribing", "state OptimizingQuality",
            "state Error(whisper-cli timed out after 3.0s.)", "state Idle" }));
    EXPECT_EQ(fakes.journal.only({ "paster", "history" }), QStringList());
}

TEST_F(DictationFlowPipeline, FailsStraightFromTranscribing) {
    recordAt(0.5);
    fakes.transcriber->outcomes.fail(failure("broken pipe"));
    keyUp();
    EXPECT_EQ(published(), QStringList({ "state Transcribing", "state Error(broken pipe)" }));
}

TEST_F(DictationFlowPipeline, TakesAnUnnamedFailureToo) {
    recordAt(0.5);
    fakes.transcriber->outcomes.fail(std::runtime_error("unexpected"));
    keyUp();
    EXPECT_EQ(manager->state(), DictationState::error("unexpected"));
}

TEST_F(DictationFlowPipeline, AsksWithTheSettingsOfTheKeyUp) {
    recordAt(0.5);
    settings->setWhisperBinaryPath("/opt/whisper-cli");
    settings->setModelPath("/opt/model.bin");
    settings->setLanguage("en");
    settings->setPerformanceMode(DictationPerformanceMode::MaxQuality);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    ASSERT_EQ(fakes.transcriber->requests.size(), 1U);
    const AdaptiveTranscriptionRequest &request = fakes.transcriber->requests[0];
    EXPECT_EQ(request.audioFileURL, fakes.live->startedURLs[0]);
    EXPECT_EQ(request.binaryURL.path(), "/opt/whisper-cli");
    EXPECT_EQ(request.modelURL.path(), "/opt/model.bin");
    EXPECT_EQ(request.language, "en");
    EXPECT_EQ(request.outputDirectoryURL.path(), fileManager.temporary.path() + "/tolmi-transcripts");
    EXPECT_EQ(request.transcriptionEngine, TranscriptionEngineOption::WhisperCLI);
    EXPECT_EQ(request.performanceMode, DictationPerformanceMode::MaxQuality);
    EXPECT_EQ(request.peakLevel, 0.5);
}

TEST_F(DictationFlowPipeline, ReadsLaterSettingsAtTheirMoment) {
    settings->setRefinementEnabled(false);
    settings->setLanguage("ro");
    recordAt(0.5);
    fakes.transcriber->outcomes.suspend();
    fakes.ollama->texts.suspend();
    keyUp();
    settings->setRefinementEnabled(true);
    fakes.transcriber->outcomes.answer(outcome("hello"));
    ASSERT_EQ(manager->state(), Kind::Refining);
    settings->setRefinementEnabled(false);
    settings->setUiLanguage(AppLanguage::English);
    fakes.paster->duringPaste = [this] { settings->setLanguage("en"); };
    fakes.ollama->texts.answer("Hello");
    EXPECT_EQ(fakes.journal.only({ "overlay.show", "paster" }),
        QStringList({ "overlay.show Transcribing ro", "overlay.show Refining ro", "overlay.show Pasting en",
            "paster.paste Hello en", "overlay.show Done en" }));
    EXPECT_EQ(fakes.transcriber->requests[0].language, "ro");
    EXPECT_EQ(fakes.history->added.at(0).language, "en");
}

TEST_F(DictationFlowPipeline, ATextThatTheClipboardDoesNotTakeIsStoredAndToldOf) {
    settings->setUiLanguage(AppLanguage::English);
    settings->setRefinementEnabled(false);
    fakes.paster->posts = false;
    recordAt(0.5);
    fakes.transcriber->outcomes.give(outcome("hello"));
    keyUp();
    EXPECT_EQ(manager->state(),
        DictationState::error(L10n::text(L10n::Phrase::pasteClipboardRefused, AppLanguage::English)));
    EXPECT_EQ(manager->lastTranscript(), "hello");
    ASSERT_EQ(fakes.history->added.size(), 1U);
    EXPECT_EQ(fakes.history->added[0].refinedText, "hello");
    clock.advance(3);
    EXPECT_EQ(manager->state(), Kind::Idle);
    fakes.paster->posts = true;
    dictate("again");
    EXPECT_EQ(manager->state(), Kind::Done);
}

TEST_F(DictationFlowPipeline, PreparesThePasteWhenARecordingStarts) {
    EXPECT_EQ(fakes.paster->prepareCount, 0);
    record();
    EXPECT_EQ(fakes.paster->prepareCount, 1);
}

TEST_F(DictationFlowPipeline, StoresTheDictation) {
    fakes.paster->target = { "Terminal", std::nullopt, Date { 12.5 } };
    fakes.paster->duringPaste = [this] { clock.block(0.05); };
    recordAt(0.5);
    clock.advance(4);
    fakes.transcriber->outcomes.suspend();
    fakes.ollama->texts.suspend();
    keyUp();
    clock.advance(1.5);
    fakes.transcriber->outcomes.answer({ "hello", 0.25, true, QualityPass::Fallback });
    clock.advance(0.5);
    fakes.ollama->texts.answer("Hello.");
    ASSERT_EQ(fakes.history->added.size(), 1U);
    FinishedDictation added = fakes.history->added[0];
    ASSERT_TRUE(added.durationSeconds.has_value());
    EXPECT_NEAR(*added.durationSeconds, 2.0, 1e-6) << "neither the recording nor the paste counts";
    added.durationSeconds = std::nullopt;
    EXPECT_EQ(added,
        (FinishedDictation { .rawText = "hello",
            .refinedText = "Hello.",
            .language = "ro",
            .durationSeconds = std::nullopt,
            .pasteTargetAppName = "Terminal",
            .pasteTargetBundleID = std::nullopt,
            .pasteTimestamp = Date { 12.5 },
            .audioFileRelativePath = fakes.live->startedURLs[0].lastPathComponent(),
            .qualityPass = QualityPass::Fallback }));
}

TEST_F(DictationFlowPipeline, EmptyTextIsDoneWithoutRefinementPasteOrEntry) {
    settings->setRefinementEnabled(false);
    dictate("before");
    clock.advance(2);
    settings->setRefinementEnabled(true);
    recordAt(0.01);
    fakes.transcriber->outcomes.give(outcome(QString()));
    keyUp();
    clock.advance(2);
    EXPECT_EQ(published(),
        QStringList({ "state Transcribing", "firstPassScore 0.75", "usedFallback false", "lastTranscript ",
            "state Done", "state Idle" }));
    EXPECT_EQ(fakes.journal.only({ "ollama", "rules", "paster", "history" }), QStringList());
}

TEST_F(DictationFlowPipeline, TextThatTheSanitizerTakesAwayIsDoneToo) {
    recordAt(0.05);
    fakes.transcriber->outcomes.give(outcome("um, thank you"));
    fakes.ollama->texts.give("Thank you.");
    keyUp();
    EXPECT_EQ(published().mid(3), QStringList({ "state Refining", "lastTranscript ", "state Done" }));
    EXPECT_EQ(fakes.journal.only({ "paster", "history" }), QStringList());
}

TEST_F(DictationFlowPipeline, LoudThanksSurvive) {
    recordAt(0.06);
    fakes.transcriber->outcomes.give(outcome("um, thank you"));
    fakes.ollama->texts.give("Thank you.");
    keyUp();
    EXPECT_EQ(manager->lastTranscript(), "Thank you.");
}

TEST_F(DictationFlowPipeline, WithoutRefinementNoSanitizerRuns) {
    settings->setRefinementEnabled(false);
    recordAt(0.01);
    fakes.transcriber->outcomes.give(outcome(" Thank you. "));
    keyUp();
    EXPECT_EQ(manager->lastTranscript(), " Thank you. ");
}

TEST_F(DictationFlowPipeline, RefinementNeverFailsADictation) {
    enum Primary { Absent, Works, Fails };
    const struct {
        Primary primary;
        bool rulesWork;
        QStringList refined;
        const char *text;
    } rows[] = {
        { Works, true, { "ollama.refine  hello " }, "by model" },
        { Absent, true, { "rules.refine  hello " }, "by rules" },
        { Absent, false, { "rules.refine  hello " }, "hello" },
        { Fails, true, { "ollama.refine  hello ", "rules.refine  hello " }, "by rules" },
        { Fails, false, { "ollama.refine  hello ", "rules.refine  hello " }, "hello" },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.primary << ' ' << row.rulesWork);
        settings->setOllamaEndpoint(row.primary == Absent ? "" : "http://localhost:11434");
        manager->configureRefiner();
        recordAt(0.5);
        fakes.transcriber->outcomes.give(outcome(" hello "));
        if (row.primary == Works)
            fakes.ollama->texts.give("  by model");
        if (row.primary == Fails)
            fakes.ollama->texts.fail(TextRefinerError(TextRefinerError::Timeout {}));
        if (row.primary != Works && row.rulesWork)
            fakes.rules->texts.give("by rules  ");
        if (row.primary != Works && !row.rulesWork)
            fakes.rules->texts.fail(failure("no rules"));
        const QString logged = loggedBy([this] { keyUp(); });
        EXPECT_EQ(logged, QString());
        EXPECT_EQ(fakes.journal.only({ "ollama.refine", "rules.refine" }), row.refined);
        EXPECT_EQ(published().mid(3),
            QStringList({ "state Refining", QStringLiteral("lastTranscript ") + row.text, "state Pasting",
                "state Done" }));
        EXPECT_FALSE(manager->usedFallback()) << "tells of the transcription only";
        clock.advance(2);
    }
}

TEST_F(DictationFlowPipeline, RefinementSwitchedOnLaterUsesTheRules) {
    settings->setRefinementEnabled(false);
    manager->configureRefiner();
    settings->setRefinementEnabled(true);
    recordAt(0.5);
    fakes.transcriber->outcomes.give(outcome("hello"));
    fakes.rules->texts.give("Hello.");
    keyUp();
    EXPECT_EQ(fakes.journal.only({ "state Refining", "ollama", "rules" }),
        QStringList({ "state Refining", "rules.refine hello" }));
}

TEST_F(DictationFlowPipeline, ARefinerThatIsReplacedFinishesItsText) {
    recordAt(0.5);
    fakes.transcriber->outcomes.give(outcome("hello"));
    fakes.ollama->texts.suspend();
    keyUp();
    settings->setRefinementEnabled(false);
    manager->configureRefiner();
    fakes.ollama->texts.answer("Hello.");
    EXPECT_EQ(manager->lastTranscript(), "Hello.");
}

class DictationFlowRefusedStop : public DictationFlowPipeline,
                                 public testing::WithParamInterface<DictationState::Kind> { };

TEST_P(DictationFlowRefusedStop, ChangesNothing) {
    reach(GetParam());
    ASSERT_EQ(manager->state().kind(), GetParam());
    fakes.journal.lines.clear();
    keyUp();
    EXPECT_EQ(fakes.journal.lines, QStringList());
    EXPECT_EQ(manager->state().kind(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(EveryStateButRecording, DictationFlowRefusedStop,
    testing::Values(DictationState::Kind::Idle, DictationState::Kind::Transcribing,
        DictationState::Kind::OptimizingQuality, DictationState::Kind::Refining, DictationState::Kind::Done,
        DictationState::Kind::Error));

TEST_F(DictationFlowPipeline, RefusesBothKeysWhilePasting) {
    settings->setRefinementEnabled(false);
    recordAt(0.5);
    QStringList during;
    fakes.paster->duringPaste = [&] {
        ASSERT_EQ(manager->state(), Kind::Pasting);
        fakes.journal.lines.clear();
        launch(manager->startDictation());
        launch(manager->stopAndProcess());
        during = fakes.journal.lines;
    };
    fakes.transcriber->outcomes.give(outcome("hello"));
    keyUp();
    EXPECT_EQ(during, QStringList());
    EXPECT_EQ(manager->state(), Kind::Done);
}

class DictationFlowOverlap : public DictationFlowPipeline {
protected:
    DictationFlowOverlap() { settings->setRefinementEnabled(false); }

    /// A second recording at level 0.8 that began one second into the done state of the first.
    void recordDuringDone() {
        recordAt(0.5);
        fakes.transcriber->outcomes.give(outcome("first"));
        keyUp();
        clock.advance(1);
        fakes.live->level = 0.8;
        record();
        fakes.journal.lines.clear();
    }
};

TEST_F(DictationFlowOverlap, ARecordingThatOutlastsTheTwoSecondsIsStranded) {
    recordDuringDone();
    clock.advance(0.98);
    EXPECT_GT(manager->audioLevel(), 0.7);
    clock.advance(10);
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_LT(manager->audioLevel(), 1e-6) << "no back end is read any more";
    EXPECT_EQ(audioLevels.back(), fakes.overlay->levels.back());
    keyUp();
    keyDown();
    keyUp();
    clock.advance(60);
    EXPECT_EQ(manager->state(), Kind::Recording);
    EXPECT_EQ(fakes.journal.lines, QStringList()) << "nothing stops the capture";
    EXPECT_EQ(fakes.transcriber->requests.size(), 1U);
}

TEST_F(DictationFlowOverlap, AKeyUpWithinTheTwoSecondsGoesOnWithoutAPeak) {
    settings->setRefinementEnabled(true);
    fakes.ollama->texts.give("First.");
    recordDuringDone();
    fakes.transcriber->outcomes.suspend();
    keyUp();
    ASSERT_EQ(fakes.transcriber->requests.size(), 2U);
    EXPECT_EQ(fakes.transcriber->requests[1].peakLevel, 0.8);
    EXPECT_EQ(fakes.transcriber->requests[1].audioFileURL, fakes.live->startedURLs[1]);
    clock.advance(1);
    EXPECT_EQ(manager->state(), Kind::Transcribing) << "the first timer leaves it alone";
    fakes.ollama->texts.give("Thank you.");
    fakes.transcriber->outcomes.answer(outcome("thank you"));
    EXPECT_EQ(manager->lastTranscript(), QString()) << "loud, but judged by a peak of 0";
    clock.advance(2);
    EXPECT_EQ(manager->state(), Kind::Idle);
}

TEST_F(DictationFlowOverlap, ThatPipelineKnowsItsFileToTheEnd) {
    recordDuringDone();
    fakes.transcriber->outcomes.suspend();
    keyUp();
    clock.advance(1);
    fakes.transcriber->outcomes.answer(outcome("second"));
    ASSERT_EQ(fakes.history->added.size(), 2U);
    EXPECT_EQ(fakes.history->added[1].audioFileRelativePath, fakes.live->startedURLs[1].lastPathComponent());
}

TEST_F(DictationFlowOverlap, TheFirstTimerCutsALaterDoneShort) {
    recordDuringDone();
    fakes.transcriber->outcomes.give(outcome("second"));
    keyUp();
    ASSERT_EQ(manager->state(), Kind::Done);
    clock.advance(1);
    EXPECT_EQ(manager->state(), Kind::Idle);
    clock.advance(1);
    EXPECT_EQ(states().count("state Idle"), 1);
}

class DictationFlowClosing : public DictationFlowPipeline {
protected:
    DictationFlowClosing() { settings->setRefinementEnabled(false); }
};

TEST_F(DictationFlowClosing, SweepsAfterTheTwoSeconds) {
    dictate("text");
    clock.advance(2);
    const FakeRetentionSweeper::Call sweep { audioCacheURL(), 24, 2048 };
    EXPECT_EQ(sweepsAtEnd(), std::vector<FakeRetentionSweeper::Call>(2, sweep));
}

TEST_F(DictationFlowClosing, SweepsLeaveTheProcessorToOthers) {
    const int own = ::getpriority(PRIO_PROCESS, id_t(::gettid()));
    ASSERT_EQ(sweepsAtEnd().size(), 1U);
    EXPECT_EQ(fakes.sweeps->niceness(), std::min(own + 10, 19));
}

TEST_F(DictationFlowClosing, DoesNotSweepBefore) {
    dictate("text");
    clock.advance(1.9);
    EXPECT_EQ(sweepsAtEnd().size(), 1U);
}

TEST_F(DictationFlowClosing, SweepsAtOnceAfterAFailure) {
    record();
    fakes.transcriber->outcomes.fail(failure("broken"));
    keyUp();
    EXPECT_EQ(sweepsAtEnd().size(), 2U);
}

TEST_F(DictationFlowClosing, DoesNotSweepForAKeyUpThatIsRefused) {
    keyUp();
    EXPECT_EQ(sweepsAtEnd().size(), 1U);
}

class DictationFlowLifetime : public DictationFlowPipeline { };

TEST_F(DictationFlowLifetime, ADictationUnderWayKeepsTheManager) {
    settings->setRefinementEnabled(false);
    recordAt(0.5);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    manager.reset();
    EXPECT_FALSE(weakManager.expired());
    fakes.transcriber->outcomes.answer(outcome("hello"));
    clock.advance(2);
    EXPECT_EQ(fakes.history->added.size(), 1U);
    EXPECT_TRUE(weakManager.expired());
}

TEST_F(DictationFlowLifetime, TheAnnouncementOfASecondPassDoesNot) {
    settings->setRefinementEnabled(false);
    dictate("hello");
    clock.advance(2);
    manager.reset();
    EXPECT_TRUE(weakManager.expired());
    fakes.journal.lines.clear();
    fakes.transcriber->announceFallback();
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

namespace {
QStringList messages;
void keepMessage(QtMsgType, const QMessageLogContext &context, const QString &message) {
    messages.append(QString::fromLatin1(context.category) + QStringLiteral(": ") + message);
}
} // namespace

class DictationFlowStages : public DictationFlowPipeline {
protected:
    DictationFlowStages()
        : m_formerHandler(qInstallMessageHandler(keepMessage)) {
        messages.clear();
        settings->setRefinementEnabled(false);
    }
    ~DictationFlowStages() override {
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(m_formerHandler);
    }

private:
    QtMessageHandler m_formerHandler;
};

TEST_F(DictationFlowStages, AreSilentUnlessAskedFor) {
    dictate("text");
    EXPECT_EQ(messages, QStringList());
}

TEST_F(DictationFlowStages, TellTheTimes) {
    QLoggingCategory::setFilterRules("tolmi.stages.info=true");
    record();
    clock.advance(1.25);
    fakes.transcriber->outcomes.suspend();
    keyUp();
    clock.advance(0.5);
    fakes.transcriber->outcomes.answer(outcome("text"));
    EXPECT_EQ(messages,
        QStringList({ "tolmi.stages: state Recording 1767225600.000",
            "tolmi.stages: state Transcribing 1767225601.250", "tolmi.stages: transcribed 0.500",
            "tolmi.stages: state Pasting 1767225601.750", "tolmi.stages: state Done 1767225601.750" }));
}
