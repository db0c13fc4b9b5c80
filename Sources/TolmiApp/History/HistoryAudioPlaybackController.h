#pragma once

#include "Foundation/Clock.h"
#include "Foundation/ObservableObject.h"
#include "Platform/AudioPlayer.h"
#include "TolmiApp/History/HistoryAudioPlaybackError.h"

#include <QSet>
#include <QUuid>

#include <optional>

/// Plays the recording of one history entry at a time. Main thread only.
class HistoryAudioPlaybackController final : public ObservableObject {
    Q_OBJECT
    /// The entry whose recording is loaded, playing or paused.
    TOLMI_PUBLISHED_READONLY(std::optional<QUuid>, playingEntryID, setPlayingEntryID)
    /// Whether sound is coming out.
    TOLMI_PUBLISHED_READONLY(bool, isPlaying, setIsPlaying)

public:
    /// Both must outlive the controller.
    HistoryAudioPlaybackController(AudioPlayers &players, Clock &clock);

    /// Pauses or resumes the entry that is loaded already; any other replaces it and plays from its start.
    /// Throws HistoryAudioPlaybackError or SystemError; a new entry is not loaded then, a paused one stays
    /// so.
    void togglePlayback(const QUuid &entryID, const FileURL &url);

    /// Forgets what is loaded.
    void stopPlayback();

    /// Stops unless the entry that is loaded is among these.
    void stopIfRemoved(const QSet<QUuid> &remainingIDs);

private:
    void pause();
    void resume();
    void play(const QUuid &entryID, const FileURL &url);
    std::unique_ptr<AudioPlayer> startedPlayer(const FileURL &url);

    AudioPlayers &m_players;
    Clock &m_clock;
    std::unique_ptr<AudioPlayer> m_player;
    /// By which work that is still to come knows whether the controller is there.
    const std::shared_ptr<HistoryAudioPlaybackController *> m_self
        = std::make_shared<HistoryAudioPlaybackController *>(this);
};
