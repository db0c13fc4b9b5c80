#pragma once

#include "Foundation/FileURL.h"
#include "Platform/AudioEngine.h"

#include <atomic>
#include <mutex>

/// Sound in which every sample bears its own number, so that a missing or doubled one shows. The sound server
/// carries 32-bit floats unchanged, and a float holds 24 bits: enough for 349 seconds.
namespace NumberedSound {

inline float sample(int number) {
    return float(number) * 0x1p-24F;
}

/// 0 for silence.
inline int number(float sample) {
    return int(sample * 0x1p24F);
}

/// The numbers of a sound file; empty when it cannot be read.
std::vector<int> read(const FileURL &url);

} // namespace NumberedSound

/// An engine that keeps the numbers of everything that the engine within delivers.
class NumberedEngine final : public AudioEngine {
public:
    explicit NumberedEngine(AudioEngine &engine)
        : m_engine(engine) { }

    AudioFormat inputFormat() const override { return m_engine.inputFormat(); }
    void installTap(int bufferSize, Tap tap) override;
    void removeTap() override { m_engine.removeTap(); }
    bool isRunning() const override { return m_engine.isRunning(); }
    void start() override { m_engine.start(); }
    void stop() override { m_engine.stop(); }

    /// The latest number that was heard.
    int newest() const { return m_newest; }
    /// How many frames were delivered, silent ones included.
    int frameCount() const { return m_frameCount; }
    /// Everything that was delivered, in order.
    std::vector<int> tape() const;

private:
    AudioEngine &m_engine;
    mutable std::mutex m_mutex;
    std::vector<int> m_tape;
    std::atomic<int> m_newest = 0;
    std::atomic<int> m_frameCount = 0;
};
