#pragma once

#include "Platform/AudioPlayer.h"
#include "Support/Print.h"
#include "Support/SystemErrorOf.h"

#include <gtest/gtest.h>

#include <atomic>

/// What every player of sound files does. `Made` builds players in its constructor and gives them as
/// `players()`, a short sound as `sound()`, files without any as `vanished()` and `broken()`; `untilItEnds`
/// waits for the end of what plays, and `listens` lets a part of the sound pass without an end.
template <typename Made>
class AudioPlayerContract : public testing::Test {
protected:
    std::unique_ptr<AudioPlayer> openSound() {
        auto player = made.players().open(made.sound());
        player->setDidFinishPlaying([this](bool successfully) {
            ++endCount;
            isSuccess = successfully;
        });
        return player;
    }

    Made made;
    std::atomic<int> endCount = 0;
    std::atomic<bool> isSuccess = false;
};

TYPED_TEST_SUITE_P(AudioPlayerContract);

TYPED_TEST_P(AudioPlayerContract, AVanishedFileIsAnErrorAtOnce) {
    const FileURL url = this->made.vanished();
    EXPECT_EQ(systemErrorOf([&] { this->made.players().open(url); }),
        QStringLiteral("No such file or directory: ") + url.path());
}

TYPED_TEST_P(AudioPlayerContract, AFileWithoutSoundIsAnErrorAtOnce) {
    const FileURL url = this->made.broken();
    EXPECT_TRUE(systemErrorOf([&] { this->made.players().open(url); }).endsWith(url.path()));
}

TYPED_TEST_P(AudioPlayerContract, PlaysToTheEndAndTellsItOnce) {
    const auto player = this->openSound();
    player->prepareToPlay();
    ASSERT_TRUE(player->play());
    this->made.untilItEnds([this] { return this->endCount > 0; });
    EXPECT_EQ(this->endCount, 1);
    EXPECT_TRUE(this->isSuccess);
}

TYPED_TEST_P(AudioPlayerContract, APauseIsNoEndAndTheRestFollows) {
    const auto player = this->openSound();
    ASSERT_TRUE(player->play());
    player->pause();
    this->made.listens();
    EXPECT_EQ(this->endCount, 0);
    ASSERT_TRUE(player->play());
    this->made.untilItEnds([this] { return this->endCount > 0; });
    EXPECT_EQ(this->endCount, 1);
}

TYPED_TEST_P(AudioPlayerContract, AStopIsNoEnd) {
    const auto player = this->openSound();
    player->stop();
    ASSERT_TRUE(player->play());
    player->stop();
    this->made.listens();
    EXPECT_EQ(this->endCount, 0);
}

REGISTER_TYPED_TEST_SUITE_P(AudioPlayerContract, AVanishedFileIsAnErrorAtOnce,
    AFileWithoutSoundIsAnErrorAtOnce, PlaysToTheEndAndTellsItOnce, APauseIsNoEndAndTheRestFollows,
    AStopIsNoEnd);
