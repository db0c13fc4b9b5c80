#include "Desktop/SpeakerRecording.h"
#include "Platform/Linux/Pulse/PulseSystemSounds.h"
#include "Recipes.h"
#include "Support/UntilTrue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
using Place = Samples::const_iterator;

bool isHeard(double sample) {
    return std::abs(sample) > 0.002;
}

double product(Place begin, Place end, Place other) {
    return std::inner_product(begin, end, other, 0.0);
}

double rms(Place begin, Place end) {
    return std::sqrt(product(begin, end, begin) / static_cast<double>(end - begin));
}

/// How alike two pieces of the same length are: 1 for the same sound at any level.
double likeness(Place begin, Place end, Place other) {
    const Place otherEnd = other + (end - begin);
    return product(begin, end, other)
        / std::sqrt(product(begin, end, begin) * product(other, otherEnd, other));
}

Samples repeated(const Samples &sound, int count) {
    Samples all;
    for (int round = 0; round < count; ++round)
        all.insert(all.end(), sound.begin(), sound.end());
    return all;
}

Samples cooked(const std::string &name) {
    const auto isWanted = [&](const Recipe &recipe) { return recipe.name == name; };
    return render(*std::find_if(recipes().begin(), recipes().end(), isWanted));
}

/// Where in `recorded` the sound starts whose first samples are `sound`, played at `volume`.
Place start(const Samples &recorded, const Samples &sound, double volume) {
    const auto softBeginning
        = std::find_if(sound.begin(), sound.end(), [&](double sample) { return isHeard(sample * volume); });
    const Place heard = std::find_if(recorded.begin(), recorded.end(), isHeard);
    return heard - std::min(heard - recorded.begin(), softBeginning - sound.begin());
}

class SystemSoundsOnSpeaker : public testing::Test {
protected:
    void SetUp() override {
        m_sound = m_sounds.named(QStringLiteral("Ping"));
        ASSERT_TRUE(m_sound);
    }
    /// Plays and waits until the speaker does.
    void play() {
        m_sound->play();
        EXPECT_TRUE(m_sound->isPlaying());
        ASSERT_TRUE(untilTrue([this] {
            const Samples &recorded = m_recording.samples();
            return std::any_of(recorded.begin(), recorded.end(), isHeard);
        }));
    }

    SpeakerRecording m_recording;
    PulseConnection m_connection;
    PulseSystemSounds m_sounds { m_connection };
    std::unique_ptr<SystemSound> m_sound;
    const Samples m_ping = cooked("Ping");
    const long m_period = static_cast<long>(m_ping.size());
};

TEST_F(SystemSoundsOnSpeaker, LoopWithoutAGapChangeTheirVolumeAndFallSilent) {
    m_sound->setLoops(true);
    m_sound->setVolume(0.8f);
    EXPECT_FALSE(m_sound->isPlaying());
    play();
    ASSERT_TRUE(m_recording.listen(3 * m_period));
    EXPECT_TRUE(m_sound->isPlaying());
    m_sound->setVolume(0.2f);
    ASSERT_TRUE(m_recording.listen(3 * m_period));
    const auto lastSounding = static_cast<long>(m_recording.samples().size());
    m_sound->stop();
    EXPECT_FALSE(m_sound->isPlaying());
    ASSERT_TRUE(m_recording.listen(2 * m_period));

    const Samples &recorded = m_recording.samples();
    const Place first = start(recorded, m_ping, 0.8);
    EXPECT_GT(likeness(first, first + 3 * m_period, repeated(m_ping, 3).begin()), 0.99);
    EXPECT_NEAR(rms(first, first + m_period) / rms(m_ping.begin(), m_ping.end()), 0.8, 0.02);
    const Place sounding = recorded.begin() + lastSounding;
    EXPECT_NEAR(rms(sounding - m_period, sounding) / rms(m_ping.begin(), m_ping.end()), 0.2, 0.01);
    EXPECT_TRUE(std::none_of(recorded.end() - m_period, recorded.end(), isHeard));
}

TEST_F(SystemSoundsOnSpeaker, PlayOnceWhenTheyDoNotLoop) {
    m_sound->setLoops(false);
    m_sound->setVolume(1);
    play();
    ASSERT_TRUE(untilTrue([this] { return !m_sound->isPlaying(); }));
    ASSERT_TRUE(m_recording.listen(m_period));
    const Samples &recorded = m_recording.samples();
    const Place first = start(recorded, m_ping, 1);
    EXPECT_GT(likeness(first, first + m_period, m_ping.begin()), 0.99);
    EXPECT_TRUE(std::none_of(first + m_period, recorded.end(), isHeard));
}

TEST_F(SystemSoundsOnSpeaker, AreAsLoudAsAskedForFromTheFirstFrameOn) {
    m_sound->setVolume(0.1f);
    play();
    ASSERT_TRUE(untilTrue([this] { return !m_sound->isPlaying(); }));
    ASSERT_TRUE(m_recording.listen(m_period));
    const auto loudest
        = [](const Samples &samples) { return *std::max_element(samples.begin(), samples.end()); };
    EXPECT_NEAR(loudest(m_recording.samples()), 0.1 * loudest(m_ping), 0.005);
}

TEST_F(SystemSoundsOnSpeaker, StartAnewAfterAStop) {
    m_sound->setLoops(true);
    play();
    m_sound->stop();
    ASSERT_TRUE(m_recording.listen(m_period));
    const size_t pause = m_recording.samples().size();
    m_sound->play();
    ASSERT_TRUE(m_recording.listen(3 * m_period));
    const Samples again(
        m_recording.samples().begin() + static_cast<long>(pause), m_recording.samples().end());
    const Place first = start(again, m_ping, 1);
    EXPECT_GT(likeness(first, first + m_period, m_ping.begin()), 0.99);
}

TEST_F(SystemSoundsOnSpeaker, FallSilentWhenTheyAreDestroyed) {
    m_sound->setLoops(true);
    play();
    m_sound.reset();
    ASSERT_TRUE(m_recording.listen(2 * m_period));
    EXPECT_TRUE(std::none_of(m_recording.samples().end() - m_period, m_recording.samples().end(), isHeard));
}
} // namespace
