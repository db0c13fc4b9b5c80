#pragma once

#include "Foundation/Error.h"
#include "Platform/AudioEngine.h"

#include <deque>
#include <mutex>

/// A microphone that hears what a test feeds it. The public members are the test's: to be read and written
/// only while no other thread calls.
class FakeAudioEngine final : public AudioEngine {
public:
    AudioFormat format { 48000, 1 };

    /// The names of the operations that were called, in order; isRunning and inputFormat are left out.
    std::vector<QString> calls;
    /// The buffer size of the latest installTap.
    int tapBufferSize = 0;

    /// What the next starts throw; none left, they work.
    std::deque<SystemError> startFailures;
    /// Runs within start(), before it fails or works.
    std::function<void()> onStart;

    AudioFormat inputFormat() const override { return format; }
    void installTap(int bufferSize, Tap tap) override;
    void removeTap() override;
    bool isRunning() const override;
    void start() override;
    void stop() override;

    /// Gives `buffer` to the tap on the calling thread, as the audio thread would; stopped, it goes nowhere.
    void feed(const AudioBuffer &buffer);

    /// A mono buffer in this engine's format.
    AudioBuffer buffer(std::vector<float> samples) const;

    /// The source goes.
    void loseSource();

private:
    mutable std::mutex m_mutex;
    Tap m_tap;
    bool m_isRunning = false;
};
