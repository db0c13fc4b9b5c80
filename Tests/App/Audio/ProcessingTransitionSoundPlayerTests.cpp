#include "Support/FakeSystemSounds.h"
#include "TolmiApp/Audio/ProcessingTransitionSoundPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {
using Kind = DictationState::Kind;
using Sound = ProcessingTransitionSound;

class ProcessingTransitionSoundPlayerTest : public testing::Test {
protected:
    ProcessingTransitionSoundPlayerTest() {
        m_sounds.names = { QStringLiteral("Hero"), QStringLiteral("Ping") };
    }
    void sync(const DictationState &state, Sound selection = Sound::Hero, double volume = 0.5) {
        m_player.sync(state, selection, volume);
    }
    const FakeSystemSounds::Sound &latest() const { return *m_sounds.sounds.back(); }
    int playingCount() const {
        return static_cast<int>(std::count_if(m_sounds.sounds.begin(), m_sounds.sounds.end(),
            [](const auto &sound) { return sound->isPlaying; }));
    }

    FakeSystemSounds m_sounds;
    ProcessingTransitionSoundPlayer m_player { m_sounds };
};

TEST_F(ProcessingTransitionSoundPlayerTest, LoopsTheSelectionAtTheVolume) {
    sync(Kind::Transcribing);
    EXPECT_EQ(m_sounds.requests, QStringList { QStringLiteral("Hero") });
    EXPECT_TRUE(latest().isPlaying);
    EXPECT_TRUE(latest().loops);
    EXPECT_EQ(latest().volume, 0.5f);
}

TEST_F(ProcessingTransitionSoundPlayerTest, IsAsLoudAsAskedForFromItsFirstMoment) {
    sync(Kind::Transcribing);
    EXPECT_EQ(latest().volumeAtPlay, 0.5f);
    sync(Kind::Refining, Sound::Ping, 0.25);
    EXPECT_EQ(latest().volumeAtPlay, 0.25f);
}

TEST_F(ProcessingTransitionSoundPlayerTest, PlaysInTheProcessingStatesOnly) {
    for (const Kind kind : { Kind::Transcribing, Kind::OptimizingQuality, Kind::Refining }) {
        sync(kind);
        EXPECT_EQ(playingCount(), 1);
        m_player.stop();
    }
    for (const DictationState &state :
        { DictationState(Kind::Idle), DictationState(Kind::Recording), DictationState(Kind::Pasting),
            DictationState(Kind::Done), DictationState::error(QStringLiteral("message")) }) {
        sync(Kind::Transcribing);
        sync(state);
        EXPECT_EQ(playingCount(), 0) << static_cast<int>(state.kind());
        EXPECT_TRUE(latest().isDestroyed);
    }
}

TEST_F(ProcessingTransitionSoundPlayerTest, LoadsNothingBeforeItIsNeeded) {
    sync(Kind::Idle);
    sync(Kind::Recording);
    sync(Kind::Transcribing, Sound::None);
    EXPECT_TRUE(m_sounds.requests.isEmpty());
}

TEST_F(ProcessingTransitionSoundPlayerTest, KeepsOneSoundThroughAllProcessingStates) {
    for (const Kind kind :
        { Kind::Transcribing, Kind::Transcribing, Kind::OptimizingQuality, Kind::Refining })
        sync(kind);
    EXPECT_EQ(m_sounds.calls, QStringList { QStringLiteral("Hero play") });
    sync(Kind::Pasting);
    const QStringList expected { QStringLiteral("Hero play"), QStringLiteral("Hero stop") };
    EXPECT_EQ(m_sounds.calls, expected);
}

TEST_F(ProcessingTransitionSoundPlayerTest, ReplacesTheSoundAtOnceWhenTheSelectionChanges) {
    sync(Kind::Refining);
    sync(Kind::Refining, Sound::Ping, 0.25);
    const QStringList expected { QStringLiteral("Hero play"), QStringLiteral("Hero stop"),
        QStringLiteral("Ping play") };
    EXPECT_EQ(m_sounds.calls, expected);
    EXPECT_EQ(playingCount(), 1);
    EXPECT_TRUE(latest().loops);
    EXPECT_EQ(latest().volume, 0.25f);
}

TEST_F(ProcessingTransitionSoundPlayerTest, KeepsTheSoundWhenTheVolumeChanges) {
    sync(Kind::Refining);
    sync(Kind::Refining, Sound::Hero, 0.75);
    EXPECT_EQ(m_sounds.calls, QStringList { QStringLiteral("Hero play") });
    EXPECT_EQ(latest().volume, 0.75f);
}

TEST_F(ProcessingTransitionSoundPlayerTest, ClampsTheVolume) {
    const std::pair<double, float> cases[] { { 2.0, 1.0f }, { -1.0, 0.0f }, { 1.0, 1.0f }, { 0.0, 0.0f } };
    for (const auto &[volume, expected] : cases) {
        sync(Kind::Transcribing, Sound::Hero, volume);
        EXPECT_EQ(latest().volume, expected) << volume;
    }
}

TEST_F(ProcessingTransitionSoundPlayerTest, StopsForTheSelectionOfSilence) {
    sync(Kind::Transcribing);
    sync(Kind::Transcribing, Sound::None);
    EXPECT_EQ(playingCount(), 0);
    sync(Kind::Transcribing);
    EXPECT_EQ(m_sounds.sounds.size(), 2u);
    EXPECT_EQ(playingCount(), 1);
}

TEST_F(ProcessingTransitionSoundPlayerTest, RestartsASoundThatStoppedByItself) {
    sync(Kind::Transcribing);
    m_sounds.sounds.back()->isPlaying = false;
    sync(Kind::OptimizingQuality);
    EXPECT_EQ(m_sounds.sounds.size(), 1u);
    EXPECT_TRUE(latest().isPlaying);
}

TEST_F(ProcessingTransitionSoundPlayerTest, StaysSilentForAnUnloadableSoundAndRetries) {
    sync(Kind::Transcribing);
    sync(Kind::Transcribing, Sound::Frog);
    EXPECT_EQ(playingCount(), 0);
    sync(Kind::Transcribing, Sound::Frog);
    const QStringList requests { QStringLiteral("Hero"), QStringLiteral("Frog"), QStringLiteral("Frog") };
    EXPECT_EQ(m_sounds.requests, requests);
    m_sounds.names.insert(QStringLiteral("Frog"));
    sync(Kind::Refining, Sound::Frog);
    EXPECT_EQ(latest().name, QStringLiteral("Frog"));
    EXPECT_EQ(playingCount(), 1);
}

TEST_F(ProcessingTransitionSoundPlayerTest, CanBeStoppedTwice) {
    m_player.stop();
    sync(Kind::Transcribing);
    m_player.stop();
    m_player.stop();
    EXPECT_EQ(playingCount(), 0);
}
} // namespace
