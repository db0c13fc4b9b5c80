#include "TolmiApp/Control/ControlCommands.h"

#include "App/Dictation/DictationFlowFixture.h"
#include "Platform/DictationKey.h"
#include "Support/FakeAccessibilityRight.h"
#include "Support/FakeEventTap.h"
#include "Support/FakeRemoteControl.h"
#include "Support/FakeSessionLock.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiCore/TranscriptionEngine.h"

#include <random>

namespace {
using Command = RemoteCommand;
using Refusal = std::optional<RemoteRefusal>;
const Refusal accepted;

/// The flow with the real key, which a keyboard and other programs press.
class ControlCommandsTest : public DictationFlowFixture {
protected:
    void SetUp() override {
        settings->setRefinementEnabled(false);
        createSetUp();
        commands.emplace(
            ControlCommands::Program { .flow = manager,
                .hotkey = hotkey,
                .clock = clock,
                .showStudio = [this] { done.append(QStringLiteral("studio")); },
                .showSettings = [this] { done.append(QStringLiteral("settings")); },
                .quit = [this] { done.append(QStringLiteral("quit")); },
                .methods = [] { return std::vector<OperationMethod> { { QStringLiteral("key") } }; },
                .version = QStringLiteral("1.2") },
            remote);
    }
    // The fixture's end wants nobody to hold the flow.
    void TearDown() override { commands.reset(); }

    DictationFlowCollaborators collaborators() override {
        DictationFlowCollaborators made = fakes.asCollaborators();
        made.hotkeyManager = hotkey;
        return made;
    }

    Refusal ask(Command command, const QString &caller = QStringLiteral(":1.7")) {
        return ask(RemoteRequest { command, caller });
    }
    Refusal ask(const RemoteRequest &request) {
        const Refusal refusal = commands->run(request);
        clock.runPosted();
        return refusal;
    }
    /// The next recording may begin.
    void allowRecording() { fakes.recorder->permission.give(true); }
    /// The next transcription goes on until it is answered.
    void transcribeSlowly() { fakes.transcriber->outcomes.suspend(); }
    /// The next transcription fails, so that the flow is free again after three seconds.
    void failToTranscribe() { fakes.transcriber->outcomes.fail(failure("no text")); }
    void pressKey(bool isDown) {
        taps.taps.back()->send(isDown ? DictationKey::pressed : DictationKey::released);
        clock.runPosted();
    }
    void joinKey() {
        taps.taps.back()->send(DictationKey::joined);
        clock.runPosted();
    }
    bool isRecording() const { return manager->state() == Kind::Recording; }
    QString state() const { return commands->status().state; }

    FakeEventTapFactory taps;
    FakeAccessibilityRight right;
    FakeSessionLock lock;
    std::shared_ptr<GlobalHotkeyManager> hotkey
        = std::make_shared<GlobalHotkeyManager>(GlobalHotkeyManager::Platform { taps, right, lock, clock });
    FakeRemoteControl remote;
    QStringList done;
    std::optional<ControlCommands> commands;
};

TEST_F(ControlCommandsTest, PressAndReleaseAreThoseOfTheKey) {
    allowRecording();
    EXPECT_EQ(ask(Command::Press), accepted);
    EXPECT_TRUE(isRecording());
    transcribeSlowly();
    EXPECT_EQ(ask(Command::Release), accepted);
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, ACallerThatLeavesLetsGo) {
    allowRecording();
    ask(Command::Press);
    commands->callerLeft(QStringLiteral(":1.8"));
    clock.runPosted();
    EXPECT_TRUE(isRecording());
    transcribeSlowly();
    commands->callerLeft(QStringLiteral(":1.7"));
    clock.runPosted();
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, CallersDoNotReleaseForEachOther) {
    allowRecording();
    ask(Command::Press, QStringLiteral(":1.1"));
    EXPECT_EQ(ask(Command::Press, QStringLiteral(":1.2")), RemoteRefusal::HeldElsewhere);
    EXPECT_EQ(ask(Command::Release, QStringLiteral(":1.2")), accepted);
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, AKeyBindingPressesForAllItsProgramsTogether) {
    allowRecording();
    EXPECT_EQ(ask({ Command::KeyDown, QStringLiteral(":1.1"), 100 }), accepted);
    commands->callerLeft(QStringLiteral(":1.1"));
    EXPECT_EQ(ask({ Command::KeyDown, QStringLiteral(":1.2"), 200 }), accepted) << "a key that repeats";
    EXPECT_TRUE(isRecording());
    transcribeSlowly();
    EXPECT_EQ(ask({ Command::KeyUp, QStringLiteral(":1.3"), 300 }), accepted);
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, AReleaseThatOvertakesItsPressEndsIt) {
    EXPECT_EQ(ask({ Command::KeyUp, QStringLiteral(":1.2"), 200 }), accepted);
    EXPECT_EQ(ask({ Command::KeyDown, QStringLiteral(":1.1"), 100 }), accepted);
    EXPECT_EQ(state(), QStringLiteral("idle"));
    allowRecording();
    EXPECT_EQ(ask({ Command::KeyDown, QStringLiteral(":1.3"), 200 }), accepted);
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, WithoutTimesTheBindingsCountAsTheyCome) {
    ask({ Command::KeyUp, QStringLiteral(":1.2"), 200 });
    allowRecording();
    ask({ Command::KeyDown, QStringLiteral(":1.1"), 0 });
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, StartLastsUntilStop) {
    allowRecording();
    EXPECT_EQ(ask(Command::Start), accepted);
    commands->callerLeft(QStringLiteral(":1.7"));
    EXPECT_EQ(ask(Command::Start, QStringLiteral(":1.8")), accepted);
    clock.advance(60);
    EXPECT_TRUE(isRecording());
    transcribeSlowly();
    EXPECT_EQ(ask(Command::Stop, QStringLiteral(":1.9")), accepted);
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, StopWithoutARecordingDoesNothing) {
    EXPECT_EQ(ask(Command::Stop), accepted);
    EXPECT_EQ(ask(Command::Release), accepted);
    EXPECT_EQ(state(), QStringLiteral("idle"));
}

TEST_F(ControlCommandsTest, ToggleTakesTurns) {
    for (int round = 0; round < 3; ++round) {
        allowRecording();
        EXPECT_EQ(ask(Command::Toggle), accepted);
        EXPECT_TRUE(isRecording());
        failToTranscribe();
        EXPECT_EQ(ask(Command::Toggle), accepted);
        EXPECT_EQ(state(), QStringLiteral("error"));
        clock.advance(3);
    }
}

TEST_F(ControlCommandsTest, ToggleAgainBeforeTheMicrophoneHasAnsweredEndsTheRecordingToCome) {
    fakes.live->preparation.emplace().suspend();
    allowRecording();
    ask(Command::Toggle);
    EXPECT_EQ(state(), QStringLiteral("idle"));
    ask(Command::Toggle);
    transcribeSlowly();
    fakes.live->preparation->answer(true);
    clock.runPosted();
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, ToggleTakesTurnsBeforeTheRecordingBeginsToo) {
    fakes.recorder->permission.suspend();
    for (int count = 0; count < 3; ++count)
        EXPECT_EQ(ask(Command::Toggle), accepted);
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, AReleaseBeforeThePermissionIsKnownEndsTheRecordingToCome) {
    for (const auto &[down, up] : { std::pair { Command::Press, Command::Release },
             std::pair { Command::KeyDown, Command::KeyUp }, std::pair { Command::Start, Command::Stop } }) {
        fakes.recorder->permission.suspend();
        ask(down);
        ask(up);
        EXPECT_EQ(state(), QStringLiteral("idle"));
        failToTranscribe();
        fakes.recorder->permission.answer(true);
        clock.runPosted();
        EXPECT_EQ(state(), QStringLiteral("error"));
        EXPECT_FALSE(hotkey->holder());
        clock.advance(3);
    }
}

TEST_F(ControlCommandsTest, AReleaseBeforeARefusedPermissionIsOver) {
    fakes.recorder->permission.suspend();
    ask(Command::Press);
    ask(Command::Release);
    fakes.recorder->permission.answer(false);
    clock.runPosted();
    EXPECT_FALSE(hotkey->holder());
    clock.advance(3);
    allowRecording();
    ask(Command::Start);
    EXPECT_TRUE(isRecording()) << "the release was that of another press";
}

TEST_F(ControlCommandsTest, APressBehindSuchAReleaseTakesItBack) {
    fakes.recorder->permission.suspend();
    ask(Command::KeyDown);
    ask(Command::KeyUp);
    ask(Command::KeyDown);
    fakes.recorder->permission.answer(true);
    clock.runPosted();
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, StopEndsWhatAButtonOrAKeyBindingBegan) {
    allowRecording();
    launch(manager->startDictation());
    clock.runPosted();
    ASSERT_TRUE(isRecording());
    failToTranscribe();
    EXPECT_EQ(ask(Command::Toggle), accepted);
    EXPECT_EQ(state(), QStringLiteral("error"));
    clock.advance(3);
    allowRecording();
    ask(Command::KeyDown);
    failToTranscribe();
    EXPECT_EQ(ask(Command::Stop), accepted);
    EXPECT_EQ(state(), QStringLiteral("error"));
}

TEST_F(ControlCommandsTest, WhoHoldsTheKeyKeepsIt) {
    allowRecording();
    pressKey(true);
    for (const Command command :
        { Command::Press, Command::KeyDown, Command::Start, Command::Stop, Command::Toggle })
        EXPECT_EQ(ask(command), RemoteRefusal::HeldElsewhere);
    for (const Command command : { Command::Release, Command::KeyUp })
        EXPECT_EQ(ask(command), accepted);
    EXPECT_TRUE(isRecording());
    transcribeSlowly();
    pressKey(false);
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

TEST_F(ControlCommandsTest, TypingWithTheKeyKeepsTheRecordingOfAnotherSource) {
    allowRecording();
    ask(Command::Start);
    pressKey(true);
    joinKey();
    pressKey(false);
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, ALockedSessionRefuses) {
    lock.locked = true;
    for (const Command command : { Command::Press, Command::KeyDown, Command::Start, Command::Toggle })
        EXPECT_EQ(ask(command), RemoteRefusal::Locked);
    EXPECT_EQ(state(), QStringLiteral("idle"));
    lock.locked = false;
    allowRecording();
    ask(Command::Start);
    lock.locked = true;
    transcribeSlowly();
    EXPECT_EQ(ask(Command::Stop), accepted);
    EXPECT_EQ(state(), QStringLiteral("transcribing"));
}

class ControlCommandsBusyTest : public ControlCommandsTest,
                                public testing::WithParamInterface<const char *> { };

TEST_P(ControlCommandsBusyTest, RefusesWhileTheLastDictationIsProcessed) {
    allowRecording();
    ask(Command::Start);
    if (QLatin1String(GetParam()) == QLatin1String("error"))
        failToTranscribe();
    else
        transcribeSlowly();
    ask(Command::Stop);
    ASSERT_EQ(state(), QLatin1String(GetParam()));
    for (const Command command : { Command::Press, Command::KeyDown, Command::Start, Command::Toggle })
        EXPECT_EQ(ask(command), RemoteRefusal::Busy);
    EXPECT_EQ(ask(Command::Stop), accepted);
    EXPECT_EQ(state(), QLatin1String(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Table, ControlCommandsBusyTest, testing::Values("transcribing", "error"),
    [](const auto &info) { return std::string(info.param); });

TEST_F(ControlCommandsTest, APressWhoseRecordingFailedIsOver) {
    fakes.recorder->permission.give(false);
    ask(Command::Start);
    EXPECT_EQ(state(), QStringLiteral("error"));
    clock.advance(3);
    allowRecording();
    EXPECT_EQ(ask(Command::Toggle), accepted);
    EXPECT_TRUE(isRecording());
    fakes.live->onSoundLost();
    EXPECT_EQ(state(), QStringLiteral("error"));
    clock.advance(3);
    allowRecording();
    EXPECT_EQ(ask(Command::Press), accepted);
    EXPECT_TRUE(isRecording());
}

TEST_F(ControlCommandsTest, APressWhoseRecordingWasEndedByAButtonIsOver) {
    allowRecording();
    ask(Command::KeyDown);
    failToTranscribe();
    launch(manager->stopAndProcess());
    clock.runPosted();
    clock.advance(3);
    allowRecording();
    EXPECT_EQ(ask(Command::Start), accepted);
    ask(Command::KeyUp);
    EXPECT_TRUE(isRecording()) << "the release belongs to a press that is over";
}

TEST_F(ControlCommandsTest, WindowsAndTheEndComeBehindTheAnswer) {
    for (const Command command : { Command::ShowStudio, Command::ShowSettings, Command::Quit })
        EXPECT_EQ(commands->run({ command, QStringLiteral(":1.7") }), accepted);
    EXPECT_EQ(done, QStringList());
    clock.runPosted();
    EXPECT_EQ(
        done, (QStringList { QStringLiteral("studio"), QStringLiteral("settings"), QStringLiteral("quit") }));
}

TEST_F(ControlCommandsTest, TellsTheStatus) {
    EXPECT_EQ(commands->status().version, QStringLiteral("1.2"));
    EXPECT_EQ(commands->status().level, 0);
    EXPECT_EQ(commands->methods().front().operation, QStringLiteral("key"));
    allowRecording();
    fakes.live->level = 0.5;
    ask(Command::Start);
    clock.advance(0.1);
    EXPECT_EQ(commands->status().level, manager->audioLevel());
    EXPECT_GT(commands->status().level, 0);
}

TEST_F(ControlCommandsTest, AnnouncesStatesAndTheLastError) {
    allowRecording();
    ask(Command::Start);
    failToTranscribe();
    ask(Command::Stop);
    clock.advance(3);
    allowRecording();
    ask(Command::Start);
    EXPECT_EQ(remote.announcements,
        (QStringList { QStringLiteral("recording"), QStringLiteral("transcribing"),
            QStringLiteral("error no text"), QStringLiteral("idle no text"), QStringLiteral("recording") }));
}

TEST_F(ControlCommandsTest, NeverGivesOutWhatWhisperCLIPrinted) {
    allowRecording();
    ask(Command::Start);
    fakes.transcriber->outcomes.fail(TranscriptionEngineError(
        TranscriptionEngineError::ProcessFailed { 3, QStringLiteral("[00:00] my secret words") }));
    ask(Command::Stop);
    EXPECT_TRUE(manager->state().message().contains(QLatin1String("secret")));
    EXPECT_EQ(commands->status().lastError, QStringLiteral("whisper-cli failed with exit code 3."));
}

TEST_F(ControlCommandsTest, WithoutABusThereIsALineInTheLog) {
    commands.reset();
    remote.availability = Availability::unavailable(QStringLiteral("there is no session bus"));
    EXPECT_EQ(loggedBy([this] {
        commands.emplace(
            ControlCommands::Program { .flow = manager, .hotkey = hotkey, .clock = clock }, remote);
    }),
        QStringLiteral("Tolmi: tolmictl will not work: there is no session bus\n"));
}

/// One of several who press at random, and whether it is down.
struct Presser {
    QString source;
    std::function<Refusal(bool isDown)> press;
    bool isDown = false;
};

// In whatever order they press: a recording runs exactly while somebody holds the key, and the next begins
// only by a press of its own.
TEST_F(ControlCommandsTest, SourcesInRandomOrderNeverDoubleOrStrandAPress) {
    const auto caller = [this](const char *name) {
        const QString address = QString::fromLatin1(name);
        return Presser { address, [this, address](bool isDown) {
                            return ask(isDown ? Command::Press : Command::Release, address);
                        } };
    };
    std::vector pressers { caller(":1.1"), caller(":1.2"),
        Presser { QStringLiteral("binding"),
            [this](bool isDown) { return ask(isDown ? Command::KeyDown : Command::KeyUp); } },
        Presser { QStringLiteral("key"), [this](bool isDown) -> Refusal {
                     pressKey(isDown);
                     return {};
                 } } };
    std::mt19937 random(11);
    QString holder;
    int expectedRecordings = 0;
    for (int step = 0; step < 2000; ++step) {
        Presser &presser = pressers[random() % pressers.size()];
        presser.isDown = !presser.isDown;
        if (presser.isDown && holder.isEmpty()) {
            holder = presser.source;
            ++expectedRecordings;
            allowRecording();
        } else if (!presser.isDown && holder == presser.source) {
            holder.clear();
            failToTranscribe();
        }
        presser.press(presser.isDown);
        ASSERT_EQ(isRecording(), !holder.isEmpty()) << "step " << step;
        // The error that ends each dictation here.
        if (holder.isEmpty())
            clock.advance(3);
    }
    EXPECT_EQ(fakes.live->startedURLs.size(), size_t(expectedRecordings));
    EXPECT_GT(expectedRecordings, 200);
}
} // namespace
