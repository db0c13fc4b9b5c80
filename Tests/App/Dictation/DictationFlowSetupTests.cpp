#include "App/Dictation/DictationFlowFixture.h"

class DictationFlowSetup : public DictationFlowFixture { };

TEST_F(DictationFlowSetup, ConstructionOnlyLooksAtTheRightAndAppliesTheLook) {
    create();
    EXPECT_EQ(fakes.journal.lines, QStringList({ "hotkey.check", "application.setAppearance dark" }));
    EXPECT_EQ(manager->state(), Kind::Idle);
    EXPECT_TRUE(manager->accessibilityGranted());
    EXPECT_EQ(manager->lastTranscript(), QString());
    EXPECT_EQ(manager->audioLevel(), 0);
    EXPECT_EQ(manager->currentPreRollPeak(), 0);
    EXPECT_EQ(manager->firstPassScore(), 0);
    EXPECT_FALSE(manager->usedFallback());
}

TEST_F(DictationFlowSetup, ConstructionKnowsAMissingRight) {
    fakes.hotkey->isTrusted = false;
    create();
    EXPECT_FALSE(manager->accessibilityGranted());
}

TEST_F(DictationFlowSetup, SetupRunsInALaterTurnOfTheLoop) {
    create();
    fakes.journal.lines.clear();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "application.setAppearance dark", "hotkey.check", "accessibilityGranted true",
            "hotkey.start", "ollama.make", "live.warmup" }));
}

TEST_F(DictationFlowSetup, MissingRightStopsOnlyTheHotkey) {
    fakes.hotkey->isTrusted = false;
    create();
    fakes.journal.lines.clear();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "application.setAppearance dark", "hotkey.check", "accessibilityGranted false",
            "hotkey.stop", "ollama.make", "live.warmup" }));
    EXPECT_EQ(sweepsAtEnd().size(), 1U);
}

TEST_F(DictationFlowSetup, ASecondSetupDoesNothing) {
    createSetUp();
    int calls = 0;
    fakes.hotkey->onKeyDown = [&calls] { ++calls; };
    manager->setup();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.lines, QStringList());
    fakes.hotkey->onKeyDown();
    EXPECT_EQ(calls, 1) << "the closure was replaced";
    EXPECT_EQ(sweepsAtEnd().size(), 1U);
}

TEST_F(DictationFlowSetup, AManagerThatHasGoneIsNotSetUp) {
    create();
    manager.reset();
    fakes.journal.lines.clear();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

TEST_F(DictationFlowSetup, ClosuresOfAManagerThatHasGoneDoNothing) {
    createSetUp();
    const auto hotkey = fakes.hotkey;
    manager.reset();
    hotkey->onKeyDown();
    hotkey->onKeyUp();
    fakes.application.didBecomeActive();
    clock.runPosted();
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

TEST_F(DictationFlowSetup, TheKeyStartsATaskInALaterTurn) {
    createSetUp();
    fakes.recorder->permission.give(true);
    fakes.hotkey->onKeyDown();
    EXPECT_EQ(fakes.journal.lines, QStringList());
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Recording);
}

TEST_F(DictationFlowSetup, EveryChangeOfASettingIsAnnouncedByTheManager) {
    createSetUp();
    int announcements = 0;
    QObject::connect(manager.get(), &ObservableObject::objectWillChange, [&] { ++announcements; });
    settings->setLanguage(QStringLiteral("en"));
    settings->setLanguage(QStringLiteral("en"));
    settings->setOllamaTimeout(3);
    EXPECT_EQ(announcements, 3);
}

TEST_F(DictationFlowSetup, TheSoundIsSyncedBeforeTheStoreHoldsTheNewValue) {
    createSetUp();
    settings->setProcessingTransitionSound(ProcessingTransitionSound::Glass);
    settings->setProcessingTransitionSoundVolume(0.9);
    settings->setProcessingTransitionSound(ProcessingTransitionSound::None);
    EXPECT_EQ(fakes.journal.lines,
        QStringList(
            { "sound.sync Idle hero 0.45", "sound.sync Idle glass 0.45", "sound.sync Idle glass 0.9" }));
}

TEST_F(DictationFlowSetup, TheLookFollowsTheSettingWithItsNewValue) {
    createSetUp();
    settings->setAppearance(AppAppearance::Light);
    settings->setAppearance(AppAppearance::System);
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "application.setAppearance light", "application.setAppearance system" }));
}

TEST_F(DictationFlowSetup, OtherSettingsTouchNothing) {
    createSetUp();
    settings->setOllamaEndpoint(QStringLiteral("http://127.0.0.1:1"));
    settings->setOllamaModel(QStringLiteral("other"));
    settings->setRefinementEnabled(false);
    settings->setUiLanguage(AppLanguage::English);
    EXPECT_EQ(fakes.journal.lines, QStringList());
}

TEST_F(DictationFlowSetup, ActivationRestartsTheHotkeyAndWarmsTheCapture) {
    createSetUp();
    fakes.application.didBecomeActive();
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "hotkey.check", "accessibilityGranted true", "hotkey.start", "live.warmup" }));
}

TEST_F(DictationFlowSetup, ActivationNoticesALostRight) {
    createSetUp();
    fakes.hotkey->isTrusted = false;
    fakes.application.didBecomeActive();
    EXPECT_FALSE(manager->accessibilityGranted());
    EXPECT_EQ(fakes.journal.lines,
        QStringList({ "hotkey.check", "accessibilityGranted false", "hotkey.stop", "live.warmup" }));
}

class DictationFlowAccessibility : public DictationFlowFixture {
protected:
    /// Attempts so far.
    int attempts() const { return fakes.journal.count(QStringLiteral("hotkey.check")); }

    void request() {
        fakes.hotkey->isTrusted = false;
        createSetUp();
        manager->requestAccessibility();
    }
};

TEST_F(DictationFlowAccessibility, RequestPromptsAndOpensTheSettings) {
    request();
    EXPECT_EQ(fakes.journal.lines, QStringList({ "hotkey.prompt", "hotkey.openSettings" }));
}

TEST_F(DictationFlowAccessibility, PollsOnceASecondAfterASleep) {
    request();
    clock.advance(0.99);
    EXPECT_EQ(attempts(), 0);
    clock.advance(0.01);
    EXPECT_EQ(attempts(), 1);
    clock.advance(1);
    EXPECT_EQ(attempts(), 2);
    EXPECT_EQ(fakes.journal.lines.last(), "hotkey.stop");
}

TEST_F(DictationFlowAccessibility, GivesUpAfterTwentyAttempts) {
    request();
    clock.advance(60);
    EXPECT_EQ(attempts(), 20);
    EXPECT_EQ(clock.pendingCallCount(), 0U);
    fakes.hotkey->isTrusted = true;
    fakes.application.didBecomeActive();
    EXPECT_TRUE(manager->accessibilityGranted());
}

TEST_F(DictationFlowAccessibility, StopsAtTheAttemptThatFindsTheRight) {
    request();
    clock.advance(2);
    fakes.hotkey->isTrusted = true;
    clock.advance(60);
    EXPECT_EQ(attempts(), 3);
    EXPECT_TRUE(manager->accessibilityGranted());
    EXPECT_EQ(fakes.journal.lines.last(), "hotkey.start");
}

TEST_F(DictationFlowAccessibility, EndsQuietlyWhenTheManagerIsGone) {
    request();
    clock.advance(1);
    manager.reset();
    EXPECT_TRUE(weakManager.expired());
    clock.advance(60);
    EXPECT_EQ(attempts(), 1);
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}

class DictationFlowRefiner : public DictationFlowFixture { };

TEST_F(DictationFlowRefiner, IsBuiltFromTheSettings) {
    settings->setOllamaEndpoint(QStringLiteral("http://127.0.0.1:9/base"));
    settings->setOllamaModel(QStringLiteral("model"));
    settings->setOllamaTimeout(2.5);
    settings->setOllamaSystemPrompt(QStringLiteral("prompt"));
    createSetUp();
    ASSERT_EQ(fakes.ollamaConfigurations.size(), 1U);
    const OllamaConfiguration &configuration = fakes.ollamaConfigurations.front();
    EXPECT_EQ(configuration.endpoint, QUrl(QStringLiteral("http://127.0.0.1:9/base")));
    EXPECT_EQ(configuration.model, "model");
    EXPECT_EQ(configuration.timeout, 2.5);
    EXPECT_EQ(configuration.systemPrompt, "prompt");
}

TEST_F(DictationFlowRefiner, NeedsTheSwitchAndAnEndpointThatParses) {
    const struct {
        bool isEnabled;
        const char *endpoint;
        bool isBuilt;
    } rows[] = {
        { true, "http://localhost:11434", true },
        { false, "http://localhost:11434", false },
        { true, "localhost:11434", true },
        { true, "", false },
        { true, "http://[::1", false },
        { true, "http://localhost:port", false },
        { false, "", false },
    };
    createSetUp();
    for (const auto &row : rows) {
        SCOPED_TRACE(row.endpoint);
        fakes.ollamaConfigurations.clear();
        settings->setRefinementEnabled(row.isEnabled);
        settings->setOllamaEndpoint(QString::fromLatin1(row.endpoint));
        manager->configureRefiner();
        EXPECT_EQ(fakes.ollamaConfigurations.size(), row.isBuilt ? 1U : 0U);
    }
}

class DictationFlowSweep : public DictationFlowFixture { };

TEST_F(DictationFlowSweep, GetsNoLimitsThatItCannotCountWith) {
    constexpr qint64 greatest = std::numeric_limits<qint64>::max();
    defaults.set(QStringLiteral("tolmi.audioRetentionHours"), greatest);
    defaults.set(QStringLiteral("tolmi.audioRetentionMaxMB"), greatest);
    settings = std::make_shared<SettingsStore>(defaults, fileManager, clock, BundleInfo {});
    const QString logged = loggedBy([this] { createSetUp(); });
    const std::vector<FakeRetentionSweeper::Call> expected { { audioCacheURL(), greatest / 3600,
        greatest / 1048576 } };
    EXPECT_EQ(sweepsAtEnd(), expected);
    EXPECT_EQ(logged.count(u"is too large"), 2);
}

TEST_F(DictationFlowSweep, GetsTheFolderAndTheLimitsOfTheSettings) {
    defaults.set(QStringLiteral("tolmi.audioRetentionHours"), qint64(7));
    defaults.set(QStringLiteral("tolmi.audioRetentionMaxMB"), qint64(99));
    settings = std::make_shared<SettingsStore>(defaults, fileManager, clock, BundleInfo {});
    createSetUp();
    const std::vector<FakeRetentionSweeper::Call> expected { { audioCacheURL(), 7, 99 } };
    EXPECT_EQ(sweepsAtEnd(), expected);
    EXPECT_TRUE(fileManager.folders.contains(audioCacheURL().path()));
}

TEST_F(DictationFlowSweep, IsUnderWayWhileTheManagerGoes) {
    createSetUp();
    manager.reset();
    EXPECT_EQ(fakes.sweeps->waitForCalls(0).size(), 1U);
}

TEST_F(DictationFlowSweep, FailureIsOnlyLogged) {
    fakes.sweeps->failNext(QStringLiteral("the disk is gone"));
    const QString logged = loggedBy([this] {
        createSetUp();
        fakes.sweeps->waitForCalls(1);
        EXPECT_EQ(manager->state(), Kind::Idle);
        EXPECT_EQ(sweepsAtEnd().size(), 1U);
    });
    EXPECT_EQ(logged, "Tolmi: audio retention sweep failed: the disk is gone\n");
    EXPECT_EQ(states(), QStringList());
}

TEST_F(DictationFlowSweep, NeedsItsFolder) {
    fileManager.createDirectoryFailures.push_back(failure("no room"));
    const QString logged = loggedBy([this] {
        createSetUp();
        EXPECT_EQ(sweepsAtEnd().size(), 0U);
    });
    EXPECT_EQ(logged, "Tolmi: audio retention sweep failed: no room\n");
}
