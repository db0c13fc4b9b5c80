#include "TolmiApp/Audio/LiveAudioCapture.h"

#include "Support/FakeAudioEngine.h"
#include "Support/FakeAudioFileStore.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeMicrophonePermission.h"
#include "Support/UntilTrue.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <future>
#include <limits>
#include <numeric>
#include <thread>

namespace {
using Calls = std::vector<QString>;

class LiveAudioCaptureTest : public testing::Test {
protected:
    void makeCapture(double preRollSeconds = 0.4) {
        capture = nullptr;
        capture = std::make_unique<LiveAudioCapture>(
            LiveAudioCapture::Platform { engine, audioFiles, permission, fileManager, clock },
            preRollSeconds);
    }

    /// Creates a capture with a running engine and no recording.
    void makeIdleCapture(double preRollSeconds = 0.4) {
        makeCapture(preRollSeconds);
        capture->startRecording(url);
        capture->stopRecording();
        audioFiles.files.clear();
    }

    /// Feeds buffers of 1024 frames whose samples count up across buffers.
    void feedCounting(int bufferCount) {
        for (int buffer = 0; buffer < bufferCount; ++buffer) {
            std::vector<float> samples(1024);
            std::iota(samples.begin(), samples.end(), float(nextSample));
            nextSample += 1024;
            engine.feed(engine.buffer(samples));
        }
    }

    void feedConstant(float sample, size_t frameCount = 1024) {
        engine.feed(engine.buffer(std::vector<float>(frameCount, sample)));
    }

    /// The content of the latest file, once all buffers are processed.
    const std::vector<float> &written() {
        capture->currentLevel();
        return audioFiles.files.back()->samples;
    }

    static void expectCounting(const std::vector<float> &samples, int first, int last) {
        ASSERT_EQ(samples.size(), size_t(last - first));
        for (size_t index = 0; index < samples.size(); ++index)
            ASSERT_EQ(samples[index], float(first) + float(index)) << "at " << index;
    }

    /// Prepares the capture and stores the outcome in `isReady` and `failure`.
    void follow(bool &isReady) {
        launch([](LiveAudioCaptureTest &test, bool &isReady) -> Task<> {
            try {
                co_await test.capture->prepareToRecord();
                isReady = true;
            } catch (const SystemError &error) {
                test.failure = error.errorDescription();
            }
        }(*this, isReady));
    }

    /// The error that starting a recording throws.
    QString startError() {
        try {
            capture->startRecording(url);
        } catch (const SystemError &error) {
            return error.errorDescription();
        }
        return QStringLiteral("no error");
    }

    const FileURL url { QStringLiteral("/cache/audio/recording.wav") };
    int nextSample = 0;
    QString failure;
    FakeAudioEngine engine;
    FakeAudioFileStore audioFiles;
    FakeMicrophonePermission permission;
    FakeFileManager fileManager;
    VirtualClock clock;
    std::unique_ptr<LiveAudioCapture> capture;
};
} // namespace

TEST_F(LiveAudioCaptureTest, ConstructionInstallsTheTapAndStartsNothing) {
    makeCapture();
    EXPECT_EQ(engine.calls, Calls { "installTap" });
    EXPECT_EQ(engine.tapBufferSize, 1024);
    EXPECT_EQ(capture->currentLevel(), 0.0);
    EXPECT_EQ(capture->currentPreRollPeak(), 0.0);
}

TEST_F(LiveAudioCaptureTest, DestructionRemovesTheTapThenStops) {
    makeIdleCapture();
    capture = nullptr;
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start", "removeTap", "stop" }));
}

TEST_F(LiveAudioCaptureTest, DestructionWaitsForAPendingStart) {
    std::promise<void> mayStart;
    engine.onStart = [&] { mayStart.get_future().wait(); };
    makeCapture();
    capture->warmupIfAuthorized();
    std::thread release([&] { mayStart.set_value(); });
    capture = nullptr;
    release.join();
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start", "removeTap", "stop" }));
    EXPECT_FALSE(engine.isRunning());
}

TEST_F(LiveAudioCaptureTest, DestructionClosesTheFile) {
    makeCapture();
    capture->startRecording(url);
    feedCounting(3);
    capture = nullptr;
    EXPECT_FALSE(audioFiles.files.back()->isOpen);
}

TEST_F(LiveAudioCaptureTest, ALengthOutOfRangeIsFatal) {
    EXPECT_DEATH(makeCapture(std::numeric_limits<double>::quiet_NaN()), "Tolmi: the pre-roll of");
    EXPECT_DEATH(makeCapture(std::numeric_limits<double>::infinity()), "Tolmi: the pre-roll of");
    EXPECT_DEATH(makeCapture(1e300), "Tolmi: the pre-roll of");
}

TEST_F(LiveAudioCaptureTest, WarmupStartsTheEngineOnlyWhenAuthorized) {
    makeCapture();
    for (const auto status : { AuthorizationStatus::NotDetermined, AuthorizationStatus::Restricted,
             AuthorizationStatus::Denied }) {
        permission.present = status;
        capture->warmupIfAuthorized();
    }
    permission.present = AuthorizationStatus::Authorized;
    std::promise<void> started;
    engine.onStart = [&] { started.set_value(); };
    capture->warmupIfAuthorized();
    started.get_future().wait();
    capture = nullptr;
    EXPECT_EQ(permission.statusCount, 4);
    EXPECT_TRUE(permission.questions.empty());
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start", "removeTap", "stop" }));
}

TEST_F(LiveAudioCaptureTest, WarmupDoesNotWaitForTheEngine) {
    std::promise<void> mayStart;
    engine.onStart = [&] { mayStart.get_future().wait(); };
    makeCapture();
    capture->warmupIfAuthorized();
    EXPECT_FALSE(engine.isRunning());
    mayStart.set_value();
    capture = nullptr;
}

TEST_F(LiveAudioCaptureTest, AFailedWarmupIsIgnoredAndTheNextStartTriesAgain) {
    engine.startFailures = { SystemError(QStringLiteral("no microphone")) };
    makeCapture();
    capture->warmupIfAuthorized();
    capture->startRecording(url);
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start", "start" }));
}

TEST_F(LiveAudioCaptureTest, ARunningEngineIsNotStartedAgain) {
    makeCapture();
    capture->warmupIfAuthorized();
    capture->startRecording(url);
    capture->warmupIfAuthorized();
    capture->startRecording(url);
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start" }));
}

TEST_F(LiveAudioCaptureTest, ALostSourceIsReopenedByTheNextStart) {
    makeIdleCapture();
    engine.loseSource();
    capture->startRecording(url);
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start", "start" }));
}

TEST_F(LiveAudioCaptureTest, TheRecordingBeginsWithTheSoundBeforeIt) {
    makeIdleCapture();
    feedCounting(30);
    capture->startRecording(url);
    feedCounting(2);
    expectCounting(written(), 12 * 1024, 32 * 1024);
    EXPECT_EQ(audioFiles.files.back()->url, url);
    EXPECT_EQ(audioFiles.files.back()->format, engine.format);
}

TEST_F(LiveAudioCaptureTest, ThePreRollConsistsOfWholeBuffers) {
    struct Row {
        double preRollSeconds;
        int bufferCount;
    };
    // At 48 kHz a buffer of 1024 frames lasts 21.33 ms.
    const Row rows[] = { { 0.4, 18 }, { 0.384, 18 }, { 0.3839, 17 }, { 0.1, 4 }, { 0.0214, 1 }, { 0.02, 0 },
        { 0, 0 }, { -1, 0 } };
    for (const Row &row : rows) {
        nextSample = 0;
        makeIdleCapture(row.preRollSeconds);
        feedCounting(25);
        capture->startRecording(url);
        expectCounting(written(), (25 - row.bufferCount) * 1024, 25 * 1024);
    }
}

TEST_F(LiveAudioCaptureTest, ThePreRollUsesTheEnginesSampleRate) {
    engine.format.sampleRate = 16000;
    makeIdleCapture();
    feedCounting(20);
    capture->startRecording(url);
    // 6400 frames hold six buffers.
    expectCounting(written(), 14 * 1024, 20 * 1024);
}

TEST_F(LiveAudioCaptureTest, ABufferLargerThanThePreRollLeavesItEmpty) {
    makeIdleCapture();
    feedCounting(5);
    feedConstant(0.5F, 19201);
    capture->startRecording(url);
    EXPECT_TRUE(written().empty());
    feedCounting(1);
    EXPECT_EQ(written().size(), 1024U);
}

TEST_F(LiveAudioCaptureTest, ABufferOfExactlyThePreRollStays) {
    makeIdleCapture();
    feedCounting(5);
    feedConstant(0.5F, 19200);
    capture->startRecording(url);
    EXPECT_EQ(written(), std::vector<float>(19200, 0.5F));
}

TEST_F(LiveAudioCaptureTest, WithoutEarlierSoundTheRecordingBeginsWithTheFirstLiveBuffer) {
    makeCapture();
    capture->startRecording(url);
    EXPECT_TRUE(written().empty());
    feedCounting(2);
    expectCounting(written(), 0, 2048);
}

TEST_F(LiveAudioCaptureTest, TheBufferOfTheEngineIsNotKept) {
    makeIdleCapture();
    AudioBuffer reused = engine.buffer(std::vector<float>(1024, 0.25F));
    engine.feed(reused);
    reused.channels[0].assign(1024, 0.75F);
    engine.feed(reused);
    capture->startRecording(url);
    std::vector<float> expected(1024, 0.25F);
    expected.resize(2048, 0.75F);
    EXPECT_EQ(written(), expected);
}

TEST_F(LiveAudioCaptureTest, TheAudioThreadNeverWaitsForTheFile) {
    std::promise<void> diskAnswers;
    audioFiles.onWrite = [answer = diskAnswers.get_future().share()] { answer.wait(); };
    makeCapture();
    capture->startRecording(url);
    std::future<void> audioThread = std::async(std::launch::async, [this] { feedCounting(20); });
    EXPECT_EQ(audioThread.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    diskAnswers.set_value();
    audioThread.wait();
    expectCounting(written(), 0, 20 * 1024);
}

TEST_F(LiveAudioCaptureTest, ThePreRollRollsOnDuringARecordingAndSurvivesIt) {
    makeCapture();
    capture->startRecording(url);
    feedCounting(40);
    expectCounting(written(), 0, 40 * 1024);
    capture->startRecording(url);
    EXPECT_FALSE(audioFiles.files[0]->isOpen);
    feedCounting(1);
    expectCounting(written(), 22 * 1024, 41 * 1024);
    expectCounting(audioFiles.files[0]->samples, 0, 40 * 1024);
}

TEST_F(LiveAudioCaptureTest, EachRecordingBeginsWithTheSoundBeforeItsOwnStart) {
    makeIdleCapture();
    feedCounting(20);
    capture->startRecording(url);
    feedCounting(2);
    capture->stopRecording();
    feedCounting(30);
    capture->startRecording(url);
    capture->stopRecording();
    expectCounting(audioFiles.files[0]->samples, 2 * 1024, 22 * 1024);
    expectCounting(audioFiles.files[1]->samples, 34 * 1024, 52 * 1024);
}

TEST_F(LiveAudioCaptureTest, StopClosesTheFileAndLeavesTheEngineOn) {
    makeCapture();
    capture->startRecording(url);
    feedCounting(1);
    capture->stopRecording();
    feedCounting(1);
    expectCounting(written(), 0, 1024);
    EXPECT_FALSE(audioFiles.files.back()->isOpen);
    EXPECT_TRUE(engine.isRunning());
}

TEST_F(LiveAudioCaptureTest, StopWithoutARecordingIsHarmless) {
    makeCapture();
    capture->stopRecording();
    capture->stopRecording();
    EXPECT_TRUE(audioFiles.files.empty());
}

TEST_F(LiveAudioCaptureTest, StartingCreatesTheFolder) {
    makeCapture();
    capture->startRecording(url);
    EXPECT_EQ(
        fileManager.calls, (std::vector<FakeFileManager::Call> { { "createDirectory", "/cache/audio" } }));
}

TEST_F(LiveAudioCaptureTest, AFailedEngineStartCreatesNoFile) {
    engine.startFailures = { SystemError(QStringLiteral("no microphone")) };
    makeCapture();
    EXPECT_EQ(startError(), "no microphone");
    EXPECT_TRUE(fileManager.calls.empty());
    EXPECT_TRUE(audioFiles.files.empty());
}

TEST_F(LiveAudioCaptureTest, AFolderThatCannotBeCreatedIsThrown) {
    fileManager.createDirectoryFailures = { SystemError(QStringLiteral("no folder")) };
    makeCapture();
    EXPECT_EQ(startError(), "no folder");
    EXPECT_TRUE(audioFiles.files.empty());
}

TEST_F(LiveAudioCaptureTest, AFileThatCannotBeCreatedIsThrown) {
    audioFiles.createFailures = { SystemError(QStringLiteral("no file")) };
    makeCapture();
    EXPECT_EQ(startError(), "no file");
    feedCounting(1);
    EXPECT_EQ(startError(), "no error");
    expectCounting(written(), 0, 1024);
}

TEST_F(LiveAudioCaptureTest, AFailedStartLeavesTheRunningRecording) {
    makeCapture();
    capture->startRecording(url);
    audioFiles.createFailures = { SystemError(QStringLiteral("no file")) };
    EXPECT_EQ(startError(), "no file");
    feedCounting(1);
    expectCounting(written(), 0, 1024);
}

TEST_F(LiveAudioCaptureTest, AFailedFlushStopsAtTheFirstErrorAndEndsTheRecording) {
    makeIdleCapture();
    feedCounting(4);
    audioFiles.failingWrites = { 2 };
    EXPECT_EQ(startError(), "No space left on device: /cache/audio/recording.wav");
    feedCounting(1);
    expectCounting(written(), 0, 2 * 1024);
    EXPECT_EQ(audioFiles.writeCount, 3);
    EXPECT_FALSE(audioFiles.files.back()->isOpen);
}

TEST_F(LiveAudioCaptureTest, AFailedLiveWriteLosesOnlyThatBuffer) {
    makeCapture();
    capture->startRecording(url);
    audioFiles.failingWrites = { 1 };
    feedCounting(3);
    std::vector<float> expected(1024);
    std::iota(expected.begin(), expected.end(), 0.0F);
    expected.resize(2048);
    std::iota(expected.begin() + 1024, expected.end(), 2048.0F);
    EXPECT_EQ(written(), expected);
}

TEST_F(LiveAudioCaptureTest, TheLevelIsThatOfTheLatestBuffer) {
    makeIdleCapture();
    struct Row {
        float sample;
        double level;
    };
    const Row rows[] = {
        { 1.0F, 1.0 },
        { 0.1F, 0.6 },
        { -0.1F, 0.6 },
        { 0.01F, 0.2 },
        { 0.001F, 0.0 },
        { 0.0F, 0.0 },
        { 4.0F, 1.0 },
        { std::numeric_limits<float>::quiet_NaN(), 0.0 },
        { std::numeric_limits<float>::infinity(), 0.0 },
    };
    for (const Row &row : rows) {
        feedConstant(row.sample);
        EXPECT_NEAR(capture->currentLevel(), row.level, 1e-5) << row.sample;
    }
}

TEST_F(LiveAudioCaptureTest, TheLevelIsTheRootMeanSquareOfTheFirstChannel) {
    engine.format.channelCount = 2;
    makeIdleCapture();
    engine.feed({ engine.format, { { 0.1F, -0.1F, 0.1F, -0.1F }, { 1, 1, 1, 1 } }, 4 });
    EXPECT_NEAR(capture->currentLevel(), 0.6, 1e-5);
    engine.feed({ engine.format, { { 0.2F, 0, 0, 0 }, { 1, 1, 1, 1 } }, 4 });
    EXPECT_NEAR(capture->currentLevel(), 0.6, 1e-5);
}

TEST_F(LiveAudioCaptureTest, TheSumOfSquaresHasSinglePrecision) {
    makeIdleCapture();
    // In single precision 1 + 4096 x 2^-26 stays 1, in double precision it does not.
    std::vector<float> samples(4097, 0x1p-13F);
    samples[0] = 1.0F;
    engine.feed(engine.buffer(samples));
    const float expected = 20.0F * std::log10(std::sqrt(1.0F / 4097.0F));
    EXPECT_EQ(capture->currentLevel(), double((expected + 50.0F) / 50.0F));
}

TEST_F(LiveAudioCaptureTest, AnEmptyBufferIsSilentAndOneWithoutSamplesChangesNothing) {
    makeIdleCapture();
    feedConstant(0.1F);
    engine.feed({ engine.format, {}, 1024 });
    EXPECT_NEAR(capture->currentLevel(), 0.6, 1e-5);
    feedConstant(0.1F, 0);
    EXPECT_EQ(capture->currentLevel(), 0.0);
}

TEST_F(LiveAudioCaptureTest, TheLevelFollowsTheMicrophoneAfterTheRecording) {
    makeIdleCapture();
    feedConstant(1.0F);
    EXPECT_EQ(capture->currentLevel(), 1.0);
    feedConstant(0.0F);
    EXPECT_EQ(capture->currentLevel(), 0.0);
}

TEST_F(LiveAudioCaptureTest, ThePeakIsNeverReset) {
    makeIdleCapture();
    feedConstant(0.1F);
    feedConstant(0.01F);
    EXPECT_NEAR(capture->currentPreRollPeak(), 0.6, 1e-5);
    for (int buffer = 0; buffer < 30; ++buffer)
        feedConstant(0.0F);
    capture->startRecording(url);
    capture->stopRecording();
    EXPECT_NEAR(capture->currentPreRollPeak(), 0.6, 1e-5);
    feedConstant(1.0F);
    EXPECT_EQ(capture->currentPreRollPeak(), 1.0);
}

TEST_F(LiveAudioCaptureTest, ARunningEngineIsReadyWithoutSuspending) {
    makeIdleCapture();
    bool isReady = false;
    follow(isReady);
    EXPECT_TRUE(isReady);
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start" }));
}

TEST_F(LiveAudioCaptureTest, ConcurrentCallersShareAStartAndItsError) {
    engine.startFailures = { SystemError(QStringLiteral("no sound")) };
    std::promise<void> mayStart;
    engine.onStart = [&] { mayStart.get_future().wait(); };
    makeCapture();
    capture->warmupIfAuthorized();
    bool isReady = false;
    follow(isReady);
    EXPECT_FALSE(isReady) << "the main thread is free meanwhile";
    EXPECT_EQ(failure, QString());
    mayStart.set_value();
    EXPECT_TRUE(untilTrue([this] {
        clock.runPosted();
        return !failure.isEmpty();
    }));
    EXPECT_EQ(failure, "no sound");
    EXPECT_EQ(engine.calls, (Calls { "installTap", "start" }));
    engine.onStart = nullptr;
    follow(isReady);
    EXPECT_TRUE(untilTrue([&] {
        clock.runPosted();
        return isReady;
    }));
}

TEST_F(LiveAudioCaptureTest, AnEngineLostWhileRecordingIsRestartedAndTheGapIsSilence) {
    makeCapture();
    capture->startRecording(url);
    feedCounting(10);
    clock.shift(10 * 1024 / 48000.0);
    engine.loseSource();
    clock.advance(0.03);
    EXPECT_FALSE(engine.isRunning());
    clock.advance(0.22);
    ASSERT_TRUE(untilTrue([this] { return engine.isRunning(); }));
    clock.shift(0.75);
    feedCounting(2);
    ASSERT_EQ(written().size(), 10U * 1024 + 48000 + 1024);
    EXPECT_EQ(written()[10 * 1024 - 1], float(10 * 1024 - 1));
    EXPECT_EQ(written()[10 * 1024], 0.0F);
    EXPECT_EQ(written()[10 * 1024 + 48000 - 1024 - 1], 0.0F);
    EXPECT_EQ(written()[10 * 1024 + 48000 - 1024], float(10 * 1024));
}

TEST_F(LiveAudioCaptureTest, LostSoundIsReportedAfterThreeSecondsButOnlyWhileRecording) {
    makeCapture();
    int lossCount = 0;
    capture->onSoundLost = [&lossCount] { ++lossCount; };
    capture->startRecording(url);
    feedCounting(1);
    engine.startFailures.assign(100, SystemError(QStringLiteral("no sound")));
    engine.loseSource();
    clock.advance(2.99);
    EXPECT_EQ(lossCount, 0);
    clock.advance(0.01);
    EXPECT_EQ(lossCount, 1);
    capture->stopRecording();
    clock.advance(10);
    EXPECT_EQ(lossCount, 1);
}

TEST_F(LiveAudioCaptureTest, NoBufferIsLostOrDuplicatedWhenStartingWithARunningMicrophone) {
    constexpr size_t frameCount = 64;
    makeIdleCapture();
    std::atomic<bool> isEnding = false;
    std::thread microphone([&] {
        for (int buffer = 0; !isEnding; ++buffer) {
            feedConstant(float(buffer), frameCount);
            // Otherwise the queue would grow without bound.
            if (buffer % 8 == 0)
                capture->currentLevel();
        }
    });
    for (int start = 0; start < 200; ++start) {
        capture->startRecording(url);
        capture->currentLevel();
        capture->stopRecording();
    }
    isEnding = true;
    microphone.join();
    ASSERT_EQ(audioFiles.files.size(), 200U);
    for (const auto &file : audioFiles.files) {
        const auto &samples = file->samples;
        for (size_t index = 0; index < samples.size(); ++index)
            ASSERT_EQ(samples[index], samples[0] + float(index / frameCount));
    }
}
