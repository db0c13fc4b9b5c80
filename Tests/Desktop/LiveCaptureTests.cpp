#include "Desktop/NumberedSound.h"
#include "Desktop/SoundServer.h"
#include "Foundation/Error.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Audio/LiveAudioCapture.h"

#include <QDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <random>

namespace {
constexpr int framesPerMillisecond = 48;
/// What 0.4 seconds hold of whole buffers of 1024 frames.
constexpr int preRollFrames = 18 * 1024;

class LiveCaptureTest : public testing::Test {
protected:
    void SetUp() override { waitForSpeech(); }

    /// Until the pre-roll holds numbers only.
    void waitForSpeech() {
        capture.warmupIfAuthorized();
        hear(2 * preRollFrames);
    }

    void hear(int frameCount) {
        const int start = engine.frameCount();
        ASSERT_TRUE(
            waitUntil([&] { return engine.frameCount() >= start + frameCount && engine.newest() > 0; }));
    }

    /// A few buffers, silent ones too.
    void hearAnything() {
        const int start = engine.frameCount();
        ASSERT_TRUE(waitUntil([&] { return engine.frameCount() >= start + 4096; }));
    }

    /// The error that starting a recording throws, which it does in bounded time.
    QString startError() {
        const auto start = std::chrono::steady_clock::now();
        QString text = QStringLiteral("no error");
        try {
            capture.startRecording(url);
        } catch (const SystemError &error) {
            text = error.errorDescription();
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        return text;
    }

    /// Expects a file of at least the pre-roll whose numbers count on.
    void expectWholeRecording() {
        const std::vector<int> numbers = NumberedSound::read(url);
        ASSERT_GE(numbers.size(), size_t(preRollFrames));
        const auto isBreak = [](int left, int right) { return left != 0 && right != 0 && right != left + 1; };
        EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end(), isBreak), numbers.end());
        EXPECT_GT(*std::max_element(numbers.begin(), numbers.end()), 0);
    }

    void lose(bool wholeServer) {
        if (wholeServer)
            server.kill();
        else
            server.removeMicrophone();
        ASSERT_TRUE(waitUntil([this] { return !engine.isRunning(); }));
    }

    void bringBack(bool wholeServer) {
        if (wholeServer) {
            server.start();
            speech = nullptr;
            speech = std::make_unique<Speech>(speaking());
        } else {
            server.addMicrophone();
        }
    }

    SoundServer server;
    /// Loud enough to be seen on a meter.
    int nextNumber = 1 << 22;
    /// Bound to the server of the start; a test that kills the server speaks anew.
    std::unique_ptr<Speech> speech = std::make_unique<Speech>(speaking());
    QTemporaryDir folder;
    const FileURL url { folder.filePath(QStringLiteral("recordings/a.wav")) };
    PulseConnection connection;
    PulseAudioEngine pulseEngine { connection };
    NumberedEngine engine { pulseEngine };
    SndFileStore audioFiles;
    VirtualClock clock;
    PulseMicrophonePermission permission { connection, clock };
    LinuxFileManager fileManager { { QDir::homePath(), {}, {}, folder.path() } };
    LiveAudioCapture capture { { engine, audioFiles, permission, fileManager, clock } };

    std::function<float()> speaking() {
        return [this] { return NumberedSound::sample(++nextNumber); };
    }
};

/// Where on the tape the recording begins, at `earliest` or later; -1 if nowhere. Counted in frames: the
/// numbers stand still while the player starves.
int beginOf(const std::vector<int> &recorded, const std::vector<int> &tape, int earliest) {
    const auto begin
        = std::search(tape.begin() + std::max(earliest, 0), tape.end(), recorded.begin(), recorded.end());
    return begin == tape.end() ? -1 : int(begin - tape.begin());
}

/// A player that starves leaves silence, and its next number follows on; anything else is a frame lost or
/// doubled on the way. Gives how often the player starved.
int expectUnbroken(const std::vector<int> &tape) {
    int starvations = 0;
    int last = 0;
    bool wasSilent = false;
    for (const int number : tape) {
        if (number == 0 && !wasSilent && last != 0)
            ++starvations;
        wasSilent = number == 0;
        if (number == 0)
            continue;
        EXPECT_EQ(number, last == 0 ? number : last + 1);
        last = number;
    }
    return starvations;
}
} // namespace

TEST_F(LiveCaptureTest, NoFrameIsMissingOrDoubledOverTwoHundredStarts) {
    std::mt19937 random(20240229);
    std::uniform_int_distribution gapMilliseconds(5, 80);
    std::uniform_int_distribution recordedMilliseconds(0, 90);
    int leastLead = std::numeric_limits<int>::max();
    int mostLead = 0;
    for (int start = 0; start < 200; ++start) {
        hear(gapMilliseconds(random) * framesPerMillisecond);
        const int before = engine.frameCount();
        capture.startRecording(url);
        const int after = engine.frameCount();
        hear(recordedMilliseconds(random) * framesPerMillisecond);
        capture.stopRecording();

        const std::vector<int> recorded = NumberedSound::read(url);
        ASSERT_GE(recorded.size(), size_t(preRollFrames)) << "start " << start;
        // The last buffer before the call may still be on its way to the pre-roll.
        const int begin = beginOf(recorded, engine.tape(), before - preRollFrames - 1024);
        ASSERT_GE(begin, 0) << "start " << start;
        ASSERT_LE(begin + preRollFrames, after + 1024) << "start " << start;
        leastLead = std::min(leastLead, before - begin);
        mostLead = std::max(mostLead, before - begin);
    }
    const int starvations = expectUnbroken(engine.tape());
    std::cout << "recordings begin " << leastLead / framesPerMillisecond << " to "
              << mostLead / framesPerMillisecond
              << " ms before the latest sound at their start; the player starved " << starvations
              << " times\n";
}

TEST_F(LiveCaptureTest, AMicrophoneThatGoesWhileIdleIsOpenedAgainByTheNextStart) {
    server.removeMicrophone();
    ASSERT_TRUE(waitUntil([this] { return !engine.isRunning(); }));
    EXPECT_EQ(startError(),
        "No microphone was found. Connect one or choose an input in the sound settings, then try again.");
    server.addMicrophone();
    const int last = engine.newest();
    EXPECT_EQ(startError(), "no error");
    hear(preRollFrames);
    capture.stopRecording();
    const std::vector<int> numbers = NumberedSound::read(url);
    EXPECT_FALSE(numbers.empty());
    for (const int number : numbers)
        ASSERT_TRUE(number == 0 || number > last) << "sound from before the gap";
}

TEST_F(LiveCaptureTest, AMicrophoneThatGoesWhileRecordingLeavesAReadableFileAndSilence) {
    capture.startRecording(url);
    hear(4800);
    EXPECT_GT(capture.currentLevel(), 0.0);
    server.removeMicrophone();
    ASSERT_TRUE(waitUntil([this] { return !engine.isRunning(); }));
    EXPECT_EQ(capture.currentLevel(), 0.0);
    capture.stopRecording();
    expectWholeRecording();
    server.addMicrophone();
    waitForSpeech();
    EXPECT_EQ(startError(), "no error");
    capture.stopRecording();
    expectWholeRecording();
}

TEST_F(LiveCaptureTest, AServerThatIsKilledWhileRecordingLeavesAReadableFileAndComesBack) {
    capture.startRecording(url);
    hear(4800);
    server.kill();
    ASSERT_TRUE(waitUntil([this] { return !engine.isRunning(); }));
    EXPECT_EQ(capture.currentLevel(), 0.0);
    capture.stopRecording();
    expectWholeRecording();
    EXPECT_EQ(permission.status(), AuthorizationStatus::Authorized);
    EXPECT_EQ(startError(), "No sound server is running. Start PipeWire or PulseAudio, then try again.");
    server.start();
    speech = nullptr;
    speech = std::make_unique<Speech>(speaking());
    waitForSpeech();
    EXPECT_EQ(startError(), "no error");
    capture.stopRecording();
    expectWholeRecording();
}

TEST_F(LiveCaptureTest, AServerThatHangsIsNoticedAndComesBack) {
    server.freeze();
    ASSERT_TRUE(waitUntil([this] { return !engine.isRunning(); }));
    EXPECT_EQ(startError(),
        "The microphone delivers no sound. Choose another input in the sound settings, then try again.");
    EXPECT_EQ(startError(), "The sound server does not answer. Restart it, then try again.");
    server.thaw();
    waitForSpeech();
    EXPECT_EQ(startError(), "no error");
    capture.stopRecording();
    expectWholeRecording();
}

// Every cycle must end, and every tenth takes the whole server away.
TEST_F(LiveCaptureTest, AHundredLossesWhileIdleEndInAWorkingCapture) {
    for (int cycle = 1; cycle <= 100; ++cycle) {
        lose(cycle % 10 == 0);
        ASSERT_NE(startError(), "no error") << "cycle " << cycle;
        bringBack(cycle % 10 == 0);
        ASSERT_EQ(startError(), "no error") << "cycle " << cycle;
        hearAnything();
        capture.stopRecording();
        ASSERT_FALSE(NumberedSound::read(url).empty()) << "cycle " << cycle;
    }
    waitForSpeech();
    EXPECT_EQ(startError(), "no error");
    capture.stopRecording();
    expectWholeRecording();
}

TEST_F(LiveCaptureTest, AHundredLossesWhileRecordingLeaveReadableFiles) {
    for (int cycle = 1; cycle <= 100; ++cycle) {
        ASSERT_EQ(startError(), "no error") << "cycle " << cycle;
        hearAnything();
        lose(cycle % 10 == 0);
        EXPECT_EQ(capture.currentLevel(), 0.0) << "cycle " << cycle;
        capture.stopRecording();
        ASSERT_FALSE(NumberedSound::read(url).empty()) << "cycle " << cycle;
        bringBack(cycle % 10 == 0);
    }
    waitForSpeech();
    EXPECT_EQ(startError(), "no error");
    capture.stopRecording();
    expectWholeRecording();
}
