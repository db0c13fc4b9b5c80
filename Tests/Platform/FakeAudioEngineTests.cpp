#include "Support/AudioEngineContract.h"
#include "Support/FakeAudioEngine.h"

namespace {
class FakeSubject final : public AudioEngineSubject {
public:
    AudioEngine &engine() override { return m_engine; }
    bool soundUntil(std::function<bool()> condition) override {
        for (int buffer = 0; buffer < 10 && !condition(); ++buffer)
            m_engine.feed(m_engine.buffer(std::vector<float>(1024, 0.5F)));
        return condition();
    }
    void removeSource() override {
        m_engine.loseSource();
        m_engine.startFailures.push_back(SystemError(QStringLiteral("no microphone")));
    }
    void bringSourceBack() override { m_engine.startFailures.clear(); }

private:
    FakeAudioEngine m_engine;
};

std::unique_ptr<AudioEngineSubject> makeFake() {
    return std::make_unique<FakeSubject>();
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, AudioEngineContract, testing::Values(&makeFake));
