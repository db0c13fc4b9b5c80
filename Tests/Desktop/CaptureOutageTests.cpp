// How a recording starts and goes on where the sound server dies, hangs or gives nothing, and whether the
// main thread stays free meanwhile.

#include "Desktop/NumberedSound.h"
#include "Desktop/SoundServer.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseFileRecorder.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Audio/AudioRecorder.h"
#include "TolmiApp/Audio/LiveAudioCapture.h"

#include <QDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {
using std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// The longest time that the main loop did not turn.
class MainLoopPulse {
public:
    MainLoopPulse() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(5);
    }

    double longestPause() {
        beat();
        return m_longest;
    }

private:
    void beat() {
        const auto now = steady_clock::now();
        m_longest = std::max(m_longest, Seconds(now - m_last).count());
        m_last = now;
    }

    QTimer m_timer;
    steady_clock::time_point m_last = steady_clock::now();
    double m_longest = 0;
};

class CaptureOutage : public testing::Test {
protected:
    /// A start as the flow makes it; what went wrong, or "live" or "plain".
    Task<QString> start() {
        capture.warmupIfAuthorized();
        bool isLive = false;
        try {
            co_await capture.prepareToRecord();
            capture.startRecording(url);
            isLive = true;
        } catch (const SystemError &) {
            isLive = false;
        }
        if (isLive)
            co_return QStringLiteral("live");
        try {
            recorder.startRecording(url);
        } catch (const LocalizedError &error) {
            co_return error.errorDescription();
        }
        co_return QStringLiteral("plain");
    }

    /// Runs a start to its end and expects it to take no longer than `limit` seconds.
    QString startWithin(double limit) {
        QString result;
        MainLoopPulse pulse;
        const auto begin = steady_clock::now();
        launch([](CaptureOutage &test, QString &result) -> Task<> { result = co_await test.start(); }(
                                                            *this, result));
        EXPECT_TRUE(untilTrue([&result] { return !result.isEmpty(); }));
        EXPECT_LT(Seconds(steady_clock::now() - begin).count(), limit);
        EXPECT_LT(pulse.longestPause(), 0.5);
        return result;
    }

    void stop() {
        MainLoopPulse pulse;
        capture.stopRecording();
        recorder.stopRecording();
        EXPECT_LT(pulse.longestPause(), 0.5);
    }

    /// Lets the main loop turn for a while.
    static void pass(double seconds) {
        const auto end = steady_clock::now() + Seconds(seconds);
        ASSERT_TRUE(untilTrue([end] { return steady_clock::now() >= end; }));
    }

    /// What the server tells of each stream that listens.
    QByteArrayList sourceOutputs() {
        return server.tell("list source-outputs").replace("Source Output #", "\f").split('\f');
    }

    std::function<float()> speaking() {
        return [this] { return NumberedSound::sample(++nextNumber); };
    }

    SoundServer server;
    int nextNumber = 1 << 22;
    QTemporaryDir folder;
    const FileURL url { folder.filePath(QStringLiteral("recordings/a.wav")) };
    MainLoopClock clock;
    PulseConnection connection;
    PulseAudioEngine engine { connection };
    SndFileStore audioFiles;
    PulseMicrophonePermission permission { connection, clock };
    LinuxFileManager fileManager { { QDir::homePath(), {}, {}, folder.path() } };
    PulseFileRecorderFactory recorders { { connection, audioFiles } };
    LiveAudioCapture capture { { engine, audioFiles, permission, fileManager, clock } };
    AudioRecorder recorder { permission, recorders };
};
} // namespace

TEST_F(CaptureOutage, AMicrophoneThatGivesNothingIsToldWithinOneDeadlineAndEveryTimeAnew) {
    server.tell("suspend-source mic 1");
    for (int press = 0; press < 2; ++press)
        EXPECT_EQ(startWithin(2.6),
            "The microphone delivers no sound. Choose another input in the sound settings, then try again.");
    server.tell("suspend-source mic 0");
    EXPECT_EQ(startWithin(2.6), "live");
    stop();
}

TEST_F(CaptureOutage, AServerThatHangsIsToldWithinOneDeadlineAndIsThereAgainLater) {
    EXPECT_EQ(startWithin(2.6), "live");
    server.freeze();
    stop();
    ASSERT_TRUE(untilTrue([this] { return !engine.isRunning(); }));
    EXPECT_EQ(startWithin(2.6),
        "The microphone delivers no sound. Choose another input in the sound settings, then try again.");
    EXPECT_EQ(startWithin(2.6), "The sound server does not answer. Restart it, then try again.");
    server.thaw();
    EXPECT_EQ(startWithin(2.6), "live");
    stop();
}

TEST_F(CaptureOutage, ADeadServerIsToldAtOnce) {
    EXPECT_EQ(startWithin(2.6), "live");
    stop();
    server.kill();
    ASSERT_TRUE(untilTrue([this] { return !engine.isRunning(); }));
    EXPECT_EQ(startWithin(0.5), "No sound server is running. Start PipeWire or PulseAudio, then try again.");
    server.start();
    EXPECT_EQ(startWithin(2.6), "live");
    stop();
}

TEST_F(CaptureOutage, AServerStartedAgainIsRecordedOnAndTheGapIsSilence) {
    auto speech = std::make_unique<Speech>(speaking());
    ASSERT_EQ(startWithin(2.6), "live");
    const auto begin = steady_clock::now();
    int lossCount = 0;
    capture.onSoundLost = [&lossCount] { ++lossCount; };
    pass(1);
    EXPECT_GT(capture.currentLevel(), 0.0);
    MainLoopPulse pulse;
    server.kill();
    ASSERT_TRUE(untilTrue([this] { return !engine.isRunning(); }));
    EXPECT_EQ(capture.currentLevel(), 0.0);
    const int lastBefore = nextNumber;
    pass(0.7);
    EXPECT_LT(pulse.longestPause(), 0.5);
    server.start();
    speech = nullptr;
    speech = std::make_unique<Speech>(speaking());
    ASSERT_TRUE(untilTrue([this] { return engine.isRunning() && capture.currentLevel() > 0; }));
    pass(1);
    const double elapsed = Seconds(steady_clock::now() - begin).count();
    stop();
    EXPECT_EQ(lossCount, 0);
    const std::vector<int> numbers = NumberedSound::read(url);
    EXPECT_GT(*std::max_element(numbers.begin(), numbers.end()), lastBefore) << "nothing after the gap";
    EXPECT_NEAR(double(numbers.size()) / 48000 - elapsed, 0.2, 0.25)
        << "the sound from before the start makes it up to 0.4 s longer";
}

TEST_F(CaptureOutage, AServerThatStaysAwayIsToldOfAfterThreeSecondsAndTheRecordingIsKept) {
    const Speech speech(speaking());
    ASSERT_EQ(startWithin(2.6), "live");
    steady_clock::time_point lost;
    int lossCount = 0;
    capture.onSoundLost = [&] {
        lost = steady_clock::now();
        ++lossCount;
        capture.stopRecording();
    };
    pass(1);
    const auto gone = steady_clock::now();
    server.kill();
    ASSERT_TRUE(untilTrue([&lossCount] { return lossCount > 0; }));
    EXPECT_NEAR(Seconds(lost - gone).count(), 3.0, 0.5);
    const std::vector<int> numbers = NumberedSound::read(url);
    EXPECT_GT(double(numbers.size()) / 48000, 1.0);
}

TEST_F(CaptureOutage, NoCaptureAsksForTheRoleOfATelephone) {
    ASSERT_EQ(startWithin(2.6), "live");
    const auto plain
        = recorders.make(FileURL(folder.filePath(QStringLiteral("b.wav"))), RecordingSettings {});
    ASSERT_TRUE(plain->record());
    int streamCount = 0;
    for (const QByteArray &stream : sourceOutputs()) {
        if (!stream.contains("media.name = \"Dictation\""))
            continue;
        ++streamCount;
        EXPECT_FALSE(stream.contains("media.role")) << stream.toStdString();
    }
    EXPECT_EQ(streamCount, 2);
    plain->stop();
    stop();
}
