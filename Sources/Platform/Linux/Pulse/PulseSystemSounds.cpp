#include "Platform/Linux/Pulse/PulseSystemSounds.h"

#include <QFile>

namespace {
class PulseSystemSound final : public SystemSound {
public:
    PulseSystemSound(PulseOutputStream::Platform platform, std::unique_ptr<SndFileReader> sound)
        : m_stream(platform, std::move(sound)) { }

    void setLoops(bool loops) override { m_stream.setLoops(loops); }
    void setVolume(float volume) override { m_stream.setVolume(volume); }
    void play() override {
        m_stream.stop();
        m_stream.play();
    }
    bool isPlaying() const override { return m_stream.isPlaying(); }
    void stop() override { m_stream.stop(); }

private:
    PulseOutputStream m_stream;
};
} // namespace

std::unique_ptr<SystemSound> PulseSystemSounds::named(const QString &name) {
    QFile file(QStringLiteral(":/Sounds/%1.wav").arg(name));
    if (name.contains(u'/') || !file.open(QIODevice::ReadOnly))
        return nullptr;
    auto sound = SndFileReader::ofContent(file.readAll());
    if (!sound)
        return nullptr;
    return std::make_unique<PulseSystemSound>(
        PulseOutputStream::Platform { m_connection, m_queue }, std::move(sound));
}
