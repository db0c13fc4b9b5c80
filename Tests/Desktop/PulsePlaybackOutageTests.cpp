// What is played while the sound server dies, hangs or is started again.

#include "Desktop/SoundServer.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseAudioPlayers.h"
#include "Platform/Linux/Pulse/PulseSystemSounds.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>

namespace {
using std::chrono::steady_clock;

constexpr std::chrono::milliseconds longestPause { 500 };

/// Runs `work`, which the main thread must get back from at once.
void promptly(const char *name, const std::function<void()> &work) {
    const auto begin = steady_clock::now();
    work();
    EXPECT_LT(steady_clock::now() - begin, longestPause) << name;
}

class PlaybackOutage : public testing::Test {
protected:
    PlaybackOutage() {
        AudioBuffer tone { { 48000, 1 }, { std::vector<float>(size_t(30) * 48000, 0.5F) }, 30 * 48000 };
        SndFileStore().create(url, tone.format)->write(tone);
    }

    std::unique_ptr<AudioPlayer> open() {
        auto player = players.open(url);
        player->setDidFinishPlaying([this](bool successfully) {
            isSuccess = successfully;
            ++endCount;
        });
        return player;
    }

    /// Whether anything is played at present: the microphone hears it.
    bool isHeard() {
        PulseAudioEngine ear(connection);
        std::atomic<bool> isLoud = false;
        ear.installTap(1024,
            [&isLoud](const AudioBuffer &buffer) { isLoud = isLoud || buffer.channels[0].front() > 0.001F; });
        ear.start();
        return waitUntil([&isLoud] { return isLoud.load(); });
    }

    SoundServer server;
    QTemporaryDir folder;
    const FileURL url { folder.filePath(QStringLiteral("long.wav")) };
    std::atomic<int> endCount = 0;
    std::atomic<bool> isSuccess = true;
    PulseConnection connection;
    PulseAudioPlayers players { connection };
    PulseSystemSounds sounds { connection };
};
} // namespace

TEST_F(PlaybackOutage, AServerThatDiesEndsThePlaybackWithAFailure) {
    const auto player = open();
    ASSERT_TRUE(player->play());
    ASSERT_TRUE(isHeard());
    server.kill();
    ASSERT_TRUE(waitUntil([this] { return endCount == 1; }));
    EXPECT_FALSE(isSuccess);
}

TEST_F(PlaybackOutage, ADeadServerRefusesAndANewOnePlaysAgain) {
    const auto sound = sounds.named(QStringLiteral("Hero"));
    sound->setLoops(true);
    sound->play();
    ASSERT_TRUE(isHeard());
    server.kill();
    EXPECT_TRUE(waitUntil([&] { return !sound->isPlaying(); }));
    const auto player = open();
    promptly("play", [&] { EXPECT_FALSE(player->play()); });
    server.start();
    EXPECT_TRUE(player->play());
    EXPECT_TRUE(isHeard());
    player->stop();
    sound->play();
    EXPECT_TRUE(isHeard());
    EXPECT_TRUE(sound->isPlaying());
}

TEST_F(PlaybackOutage, APausedSoundGoesOnUnderANewServer) {
    const auto player = open();
    ASSERT_TRUE(player->play());
    ASSERT_TRUE(isHeard());
    player->pause();
    server.kill();
    server.start();
    EXPECT_TRUE(player->play());
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(endCount, 0);
}

TEST_F(PlaybackOutage, AServerThatHangsHoldsNobodyUp) {
    auto playing = open();
    ASSERT_TRUE(playing->play());
    ASSERT_TRUE(isHeard());
    server.freeze();
    promptly("pause", [&] { playing->pause(); });
    promptly("resume", [&] { playing->play(); });
    promptly("stop", [&] { playing->stop(); });
    promptly("destruction", [&] { playing.reset(); });
    auto unplayed = open();
    promptly("play", [&] { unplayed->play(); });
    promptly("play again", [&] { unplayed->play(); });
    promptly("destruction of what waits", [&] { unplayed.reset(); });
    auto sound = sounds.named(QStringLiteral("Hero"));
    promptly("sound", [&] { sound->play(); });
    promptly("volume", [&] { sound->setVolume(0.5F); });
    promptly("question", [&] { EXPECT_TRUE(sound->isPlaying()); });
    EXPECT_TRUE(waitUntil([&] { return !sound->isPlaying(); })) << "it gives up";
    promptly("sound again", [&] { sound->play(); });
    promptly("silence", [&] { sound->stop(); });
    promptly("destruction of the sound", [&] { sound.reset(); });
    server.thaw();
    const auto player = open();
    EXPECT_TRUE(player->play());
    EXPECT_TRUE(isHeard());
}
