#include "Support/FakeSystemSounds.h"

namespace {
class FakeSystemSound final : public SystemSound {
public:
    FakeSystemSound(std::shared_ptr<FakeSystemSounds::Sound> sound, QStringList &calls)
        : m_sound(std::move(sound))
        , m_calls(calls) { }
    ~FakeSystemSound() override {
        m_sound->isPlaying = false;
        m_sound->isDestroyed = true;
    }

    void setLoops(bool loops) override { m_sound->loops = loops; }
    void setVolume(float volume) override { m_sound->volume = volume; }
    void play() override {
        m_sound->isPlaying = true;
        m_sound->volumeAtPlay = m_sound->volume;
        m_calls.append(m_sound->name + QStringLiteral(" play"));
    }
    bool isPlaying() const override { return m_sound->isPlaying; }
    void stop() override {
        m_sound->isPlaying = false;
        m_calls.append(m_sound->name + QStringLiteral(" stop"));
    }

private:
    std::shared_ptr<FakeSystemSounds::Sound> m_sound;
    QStringList &m_calls;
};
} // namespace

std::unique_ptr<SystemSound> FakeSystemSounds::named(const QString &name) {
    requests.append(name);
    if (!names.contains(name))
        return nullptr;
    sounds.push_back(std::make_shared<Sound>(Sound { .name = name }));
    return std::make_unique<FakeSystemSound>(sounds.back(), calls);
}
