#include "Platform/Desktop/QtSystemSounds.h"

#include <QFile>
#include <QSoundEffect>
#include <QUrl>

namespace {
/// Every play has an effect of its own: one that plays again first plays what was left of the time before.
class QtSystemSound final : public SystemSound {
public:
    explicit QtSystemSound(QUrl source)
        : m_source(std::move(source)) { }

    void setLoops(bool loops) override {
        m_loops = loops;
        configure();
    }
    void setVolume(float volume) override {
        m_volume = volume;
        configure();
    }
    void play() override {
        m_effect = std::make_unique<QSoundEffect>();
        m_effect->setSource(m_source);
        configure();
        m_effect->play();
    }
    bool isPlaying() const override { return m_effect && m_effect->isPlaying(); }
    void stop() override { m_effect.reset(); }

private:
    void configure() {
        if (!m_effect)
            return;
        m_effect->setLoopCount(m_loops ? QSoundEffect::Infinite : 1);
        m_effect->setVolume(m_volume);
    }

    const QUrl m_source;
    bool m_loops = false;
    float m_volume = 1;
    std::unique_ptr<QSoundEffect> m_effect;
};
} // namespace

std::unique_ptr<SystemSound> QtSystemSounds::named(const QString &name) {
    const QString path = QStringLiteral(":/Sounds/%1.wav").arg(name);
    if (name.contains(u'/') || !QFile::exists(path))
        return nullptr;
    return std::make_unique<QtSystemSound>(QUrl(QStringLiteral("qrc") + path));
}
