#include "TolmiApp/History/HistoryAudioPlaybackController.h"

#include "Support/FakeAudioPlayers.h"
#include "Support/Print.h"
#include "Support/SystemErrorOf.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

namespace {
const QUuid first = QUuid::createUuid();
const QUuid second = QUuid::createUuid();
const FileURL firstFile(QStringLiteral("/1.wav"));
const FileURL secondFile(QStringLiteral("/2.wav"));

class HistoryAudioPlaybackControllerTest : public testing::Test {
protected:
    void playFirst() { m_controller->togglePlayback(first, firstFile); }

    void expectStopped() const {
        EXPECT_EQ(m_controller->playingEntryID(), std::nullopt);
        EXPECT_FALSE(m_controller->isPlaying());
    }
    void expectPlaying(const QUuid &entry) const {
        EXPECT_EQ(m_controller->playingEntryID(), entry);
        EXPECT_TRUE(m_controller->isPlaying());
    }
    void expectPaused(const QUuid &entry) const {
        EXPECT_EQ(m_controller->playingEntryID(), entry);
        EXPECT_FALSE(m_controller->isPlaying());
    }
    FakeAudioPlayers::Sound &sound(size_t index) { return *m_players.sounds.at(index); }

    VirtualClock m_clock;
    FakeAudioPlayers m_players;
    std::unique_ptr<HistoryAudioPlaybackController> m_controller
        = std::make_unique<HistoryAudioPlaybackController>(m_players, m_clock);
};
} // namespace

TEST_F(HistoryAudioPlaybackControllerTest, NothingIsLoadedAtFirst) {
    expectStopped();
    EXPECT_EQ(m_players.calls, QStringList());
}

TEST_F(HistoryAudioPlaybackControllerTest, AToggleOpensPreparesAndPlays) {
    playFirst();
    expectPlaying(first);
    EXPECT_EQ(m_players.calls.join(u','), QStringLiteral("open /1.wav,prepare /1.wav,play /1.wav"));
}

TEST_F(HistoryAudioPlaybackControllerTest, ASecondTogglePausesAndAThirdResumesTheSamePlayer) {
    playFirst();
    playFirst();
    expectPaused(first);
    playFirst();
    expectPlaying(first);
    EXPECT_EQ(m_players.sounds.size(), 1U);
    EXPECT_EQ(m_players.calls.mid(2).join(u','), QStringLiteral("play /1.wav,pause /1.wav,play /1.wav"));
}

// Whoever is told of the one may look at the other.
TEST_F(HistoryAudioPlaybackControllerTest, TheEntryIsPublishedBeforeWhetherItPlays) {
    QStringList published;
    QObject::connect(m_controller.get(), &HistoryAudioPlaybackController::playingEntryIDWillChange,
        [&published](const std::optional<QUuid> &entry) {
            published.append(entry ? QStringLiteral("entry") : QStringLiteral("none"));
        });
    QObject::connect(m_controller.get(), &HistoryAudioPlaybackController::isPlayingWillChange,
        [&published](bool isPlaying) {
            published.append(isPlaying ? QStringLiteral("playing") : QStringLiteral("silent"));
        });
    const auto takePublished = [&published] { return std::exchange(published, {}).join(u' '); };
    playFirst();
    EXPECT_EQ(takePublished(), QStringLiteral("none silent entry playing"));
    playFirst();
    EXPECT_EQ(takePublished(), QStringLiteral("silent"));
    m_controller->stopPlayback();
    EXPECT_EQ(takePublished(), QStringLiteral("none silent"));
}

TEST_F(HistoryAudioPlaybackControllerTest, AnotherEntryReplacesThePlayingOne) {
    playFirst();
    m_controller->togglePlayback(second, secondFile);
    expectPlaying(second);
    EXPECT_TRUE(sound(0).isDestroyed);
    EXPECT_TRUE(sound(1).isPlaying);
    EXPECT_TRUE(m_players.calls.contains(QStringLiteral("stop /1.wav")));
}

TEST_F(HistoryAudioPlaybackControllerTest, AnotherEntryDropsThePausedOne) {
    playFirst();
    playFirst();
    m_controller->togglePlayback(second, secondFile);
    expectPlaying(second);
    EXPECT_TRUE(sound(0).isDestroyed);
}

TEST_F(HistoryAudioPlaybackControllerTest, StoppingForgetsThePlayer) {
    playFirst();
    m_controller->stopPlayback();
    expectStopped();
    EXPECT_TRUE(sound(0).isDestroyed);
    m_controller->stopPlayback();
    expectStopped();
}

TEST_F(HistoryAudioPlaybackControllerTest, TheEndStopsInALaterTurnOfTheMainLoop) {
    playFirst();
    sound(0).finish();
    expectPlaying(first);
    m_clock.runPosted();
    expectStopped();
    playFirst();
    EXPECT_EQ(m_players.sounds.size(), 2U);
}

TEST_F(HistoryAudioPlaybackControllerTest, AnEndThatBrokeOffIsAnEnd) {
    playFirst();
    sound(0).finish(false);
    m_clock.runPosted();
    expectStopped();
}

TEST_F(HistoryAudioPlaybackControllerTest, TheEndMayComeOnAnyThread) {
    playFirst();
    std::thread([this] { sound(0).finish(); }).join();
    m_clock.runPosted();
    expectStopped();
}

TEST_F(HistoryAudioPlaybackControllerTest, AnEndAfterTheControllerChangesNothing) {
    playFirst();
    const auto player = m_players.sounds.front();
    m_controller.reset();
    EXPECT_TRUE(player->isDestroyed);
    player->finish();
    const size_t callCount = size_t(m_players.calls.size());
    m_clock.runPosted();
    EXPECT_EQ(size_t(m_players.calls.size()), callCount);
}

TEST_F(HistoryAudioPlaybackControllerTest, ARemovedEntryStops) {
    playFirst();
    m_controller->stopIfRemoved({ first, second });
    expectPlaying(first);
    m_controller->stopIfRemoved({ second });
    expectStopped();
}

TEST_F(HistoryAudioPlaybackControllerTest, APausedEntryThatIsRemovedStops) {
    playFirst();
    playFirst();
    m_controller->stopIfRemoved({});
    expectStopped();
}

TEST_F(HistoryAudioPlaybackControllerTest, RemovalsWithNothingLoadedChangeNothing) {
    m_controller->stopIfRemoved({});
    expectStopped();
    EXPECT_EQ(m_players.calls, QStringList());
}

TEST_F(HistoryAudioPlaybackControllerTest, AnUnreadableFileThrowsItsErrorUnchangedAndStopsWhatPlayed) {
    playFirst();
    m_players.failures.emplace(secondFile.path(), SystemError::fromErrno(ENOENT, secondFile.path()));
    EXPECT_EQ(systemErrorOf([this] { m_controller->togglePlayback(second, secondFile); }),
        QStringLiteral("No such file or directory: /2.wav"));
    expectStopped();
    EXPECT_TRUE(sound(0).isDestroyed);
}

TEST_F(HistoryAudioPlaybackControllerTest, ASoundThatDoesNotStartThrowsAndIsNotLoaded) {
    m_players.canPlay = false;
    EXPECT_THROW(playFirst(), HistoryAudioPlaybackError);
    expectStopped();
    EXPECT_TRUE(sound(0).isDestroyed);
}

TEST_F(HistoryAudioPlaybackControllerTest, ASoundThatDoesNotResumeStaysPaused) {
    playFirst();
    playFirst();
    m_players.canPlay = false;
    EXPECT_THROW(playFirst(), HistoryAudioPlaybackError);
    expectPaused(first);
}

TEST(HistoryAudioPlaybackError, SaysThatPlaybackDidNotStart) {
    const HistoryAudioPlaybackError error(HistoryAudioPlaybackError::Kind::CouldNotStartPlayback);
    EXPECT_EQ(error.errorDescription(), QStringLiteral("Could not start playback."));
    EXPECT_EQ(error.kind(), HistoryAudioPlaybackError::Kind::CouldNotStartPlayback);
}
