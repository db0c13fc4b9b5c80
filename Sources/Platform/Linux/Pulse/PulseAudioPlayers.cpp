#include "Platform/Linux/Pulse/PulseAudioPlayers.h"

namespace {
class PulseAudioPlayer final : public AudioPlayer {
public:
    PulseAudioPlayer(PulseOutputStream::Platform platform, std::unique_ptr<SndFileReader> sound)
        : m_stream(platform, std::move(sound)) { }

    void setDidFinishPlaying(DidFinishPlaying observer) override { m_stream.setDidEnd(std::move(observer)); }
    // Nothing to prepare: the connection is already open, and the rest takes a few milliseconds.
    void prepareToPlay() override { }
    bool play() override;
    void pause() override { m_stream.pause(); }
    void stop() override { m_stream.stop(); }

private:
    PulseOutputStream m_stream;
};

bool PulseAudioPlayer::play() {
    // A healthy server answers in milliseconds. If it answers later with a failure, or never, the caller is
    // notified by the end of the playback.
    constexpr std::chrono::milliseconds patience { 200 };
    const auto answer = m_stream.play();
    return answer.wait_for(patience) != std::future_status::ready || answer.get();
}
} // namespace

std::unique_ptr<AudioPlayer> PulseAudioPlayers::open(const FileURL &url) {
    return std::make_unique<PulseAudioPlayer>(
        PulseOutputStream::Platform { m_connection, m_queue }, SndFileReader::open(url));
}
