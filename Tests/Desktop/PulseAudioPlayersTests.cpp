#include "Desktop/SpeakerRecording.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Pulse/PulseAudioPlayers.h"
#include "Support/AudioPlayerContract.h"
#include "Support/UntilTrue.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <numbers>

#include <sys/stat.h>

namespace {
constexpr int rate = 48000;

/// A tone of 32-bit floats, as recordings are.
void writeTone(const FileURL &url, double seconds) {
    AudioBuffer tone { { rate, 1 }, { {} }, qint64(seconds * rate) };
    for (qint64 frame = 0; frame < tone.frameLength; ++frame)
        tone.channels[0].push_back(0.5F * float(std::sin(2 * std::numbers::pi * 440 * double(frame) / rate)));
    SndFileStore().create(url, tone.format)->write(tone);
}

bool isHeard(double sample) {
    return std::abs(sample) > 0.05;
}

double heardSeconds(const std::vector<double> &samples) {
    // A tone is below the threshold for a thirtieth of its time.
    return double(std::count_if(samples.begin(), samples.end(), isHeard)) / rate;
}

class MadeReal {
public:
    MadeReal() {
        writeTone(sound(), 0.4);
        QFile file(broken().path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("RIFF, but no sound at all") > 0);
    }

    AudioPlayers &players() { return m_players; }
    FileURL sound() const { return at("sound.wav"); }
    FileURL vanished() const { return at("vanished.wav"); }
    FileURL broken() const { return at("broken.wav"); }
    FileURL at(const char *name) const { return FileURL(m_folder.filePath(QString::fromLatin1(name))); }
    void listens() { EXPECT_TRUE(m_recording.listen(rate)); }
    void untilItEnds(const std::function<bool()> &hasEnded) { EXPECT_TRUE(untilTrue(hasEnded)); }
    SpeakerRecording &recording() { return m_recording; }

private:
    QTemporaryDir m_folder;
    PulseConnection m_connection;
    PulseAudioPlayers m_players { m_connection };
    SpeakerRecording m_recording;
};

class PlayersOnSpeaker : public testing::Test {
protected:
    void waitUntilHeard() {
        ASSERT_TRUE(untilTrue([this] {
            const auto &samples = m_made.recording().samples();
            return std::any_of(samples.begin(), samples.end(), isHeard);
        }));
    }

    MadeReal m_made;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, AudioPlayerContract, MadeReal);

TEST_F(PlayersOnSpeaker, AreHeardWholeAndGoOnWhereTheyPaused) {
    writeTone(m_made.at("long.wav"), 2);
    const auto player = m_made.players().open(m_made.at("long.wav"));
    bool hasEnded = false;
    player->setDidFinishPlaying([&hasEnded](bool) { hasEnded = true; });
    ASSERT_TRUE(player->play());
    waitUntilHeard();
    ASSERT_TRUE(m_made.recording().listen(rate / 2));
    player->pause();
    ASSERT_TRUE(m_made.recording().listen(rate));
    const auto &paused = m_made.recording().samples();
    EXPECT_TRUE(std::none_of(paused.end() - rate / 4, paused.end(), isHeard));
    EXPECT_FALSE(hasEnded);
    ASSERT_TRUE(player->play());
    ASSERT_TRUE(untilTrue([&hasEnded] { return hasEnded; }));
    ASSERT_TRUE(m_made.recording().listen(rate));
    EXPECT_NEAR(heardSeconds(m_made.recording().samples()), 2 * 0.968, 0.25);
}

TEST_F(PlayersOnSpeaker, FallSilentWhenTheyAreDestroyed) {
    writeTone(m_made.at("long.wav"), 30);
    auto player = m_made.players().open(m_made.at("long.wav"));
    ASSERT_TRUE(player->play());
    waitUntilHeard();
    player.reset();
    ASSERT_TRUE(m_made.recording().listen(rate));
    const auto &samples = m_made.recording().samples();
    EXPECT_TRUE(std::none_of(samples.end() - rate / 4, samples.end(), isHeard));
}

TEST_F(PlayersOnSpeaker, ARecordingWithoutAnySoundEndsAtOnce) {
    writeTone(m_made.at("empty.wav"), 0);
    const auto player = m_made.players().open(m_made.at("empty.wav"));
    bool hasEnded = false;
    player->setDidFinishPlaying([&hasEnded](bool) { hasEnded = true; });
    player->play();
    EXPECT_TRUE(untilTrue([&hasEnded] { return hasEnded; }));
}

TEST_F(PlayersOnSpeaker, APipeOrAFolderIsNotWaitedFor) {
    const FileURL pipe = m_made.at("pipe.wav");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe.path()).constData(), 0600), 0);
    EXPECT_EQ(systemErrorOf([&] { m_made.players().open(pipe); }),
        QStringLiteral("Invalid argument: ") + pipe.path());
    const FileURL folder = pipe.deletingLastPathComponent();
    EXPECT_EQ(systemErrorOf([&] { m_made.players().open(folder); }),
        QStringLiteral("Is a directory: ") + folder.path());
}
