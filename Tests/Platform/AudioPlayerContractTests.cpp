#include "Support/AudioPlayerContract.h"
#include "Support/FakeAudioPlayers.h"

#include <cerrno>

namespace {
class MadeFake {
public:
    MadeFake() {
        m_players.failures.emplace(vanished().path(), SystemError::fromErrno(ENOENT, vanished().path()));
        m_players.failures.emplace(
            broken().path(), SystemError(QStringLiteral("no sound: ") + broken().path()));
    }

    AudioPlayers &players() { return m_players; }
    FileURL sound() const { return FileURL(QStringLiteral("/sound.wav")); }
    FileURL vanished() const { return FileURL(QStringLiteral("/vanished.wav")); }
    FileURL broken() const { return FileURL(QStringLiteral("/broken.wav")); }
    void listens() { }
    void untilItEnds(const std::function<bool()> &) { m_players.sounds.back()->finish(); }

private:
    FakeAudioPlayers m_players;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, AudioPlayerContract, MadeFake);
