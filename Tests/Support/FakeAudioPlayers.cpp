#include "Support/FakeAudioPlayers.h"

namespace {
class FakeAudioPlayer final : public AudioPlayer {
public:
    FakeAudioPlayer(std::shared_ptr<FakeAudioPlayers::Sound> sound, FakeAudioPlayers &players)
        : m_sound(std::move(sound))
        , m_players(players) { }
    ~FakeAudioPlayer() override {
        m_sound->isPlaying = false;
        m_sound->isDestroyed = true;
    }

    void setDidFinishPlaying(DidFinishPlaying observer) override {
        m_sound->didFinishPlaying = std::move(observer);
    }
    void prepareToPlay() override { record("prepare"); }
    bool play() override {
        record("play");
        m_sound->isPlaying = m_players.canPlay;
        return m_players.canPlay;
    }
    void pause() override {
        record("pause");
        m_sound->isPlaying = false;
    }
    void stop() override {
        record("stop");
        m_sound->isPlaying = false;
    }

private:
    void record(const char *operation) {
        m_players.calls.append(QString::fromLatin1(operation) + u' ' + m_sound->path);
    }

    std::shared_ptr<FakeAudioPlayers::Sound> m_sound;
    FakeAudioPlayers &m_players;
};
} // namespace

std::unique_ptr<AudioPlayer> FakeAudioPlayers::open(const FileURL &url) {
    calls.append(QStringLiteral("open ") + url.path());
    const auto failure = failures.find(url.path());
    if (failure != failures.end())
        throw failure->second;
    sounds.push_back(std::make_shared<Sound>(Sound { .path = url.path() }));
    return std::make_unique<FakeAudioPlayer>(sounds.back(), *this);
}
