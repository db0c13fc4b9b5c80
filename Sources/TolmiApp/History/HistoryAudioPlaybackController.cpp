#include "TolmiApp/History/HistoryAudioPlaybackController.h"

HistoryAudioPlaybackController::HistoryAudioPlaybackController(AudioPlayers &players, Clock &clock)
    : m_players(players)
    , m_clock(clock) { }

void HistoryAudioPlaybackController::togglePlayback(const QUuid &entryID, const FileURL &url) {
    if (playingEntryID() != entryID)
        play(entryID, url);
    else if (isPlaying())
        pause();
    else
        resume();
}

void HistoryAudioPlaybackController::stopPlayback() {
    if (m_player)
        m_player->stop();
    m_player.reset();
    setPlayingEntryID(std::nullopt);
    setIsPlaying(false);
}

void HistoryAudioPlaybackController::stopIfRemoved(const QSet<QUuid> &remainingIDs) {
    if (playingEntryID() && !remainingIDs.contains(*playingEntryID()))
        stopPlayback();
}

void HistoryAudioPlaybackController::pause() {
    if (m_player)
        m_player->pause();
    setIsPlaying(false);
}

void HistoryAudioPlaybackController::resume() {
    if (!m_player || !m_player->play())
        throw HistoryAudioPlaybackError(HistoryAudioPlaybackError::Kind::CouldNotStartPlayback);
    setIsPlaying(true);
}

void HistoryAudioPlaybackController::play(const QUuid &entryID, const FileURL &url) {
    // What played before is gone even if this one fails.
    stopPlayback();
    m_player = startedPlayer(url);
    setPlayingEntryID(entryID);
    setIsPlaying(true);
}

std::unique_ptr<AudioPlayer> HistoryAudioPlaybackController::startedPlayer(const FileURL &url) {
    auto player = m_players.open(url);
    player->setDidFinishPlaying([self = std::weak_ptr(m_self), &clock = m_clock](bool) {
        // Perhaps on another thread, and in any case inside the player, which the end of playback destroys.
        clock.post([self] {
            if (const auto controller = self.lock())
                (*controller)->stopPlayback();
        });
    });
    player->prepareToPlay();
    if (!player->play())
        throw HistoryAudioPlaybackError(HistoryAudioPlaybackError::Kind::CouldNotStartPlayback);
    return player;
}
