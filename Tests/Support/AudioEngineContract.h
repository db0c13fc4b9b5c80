#pragma once

#include "Foundation/Error.h"
#include "Platform/AudioEngine.h"

#include <gtest/gtest.h>

#include <atomic>

/// One kind of engine with a source that sounds, and what a test does to that source.
class AudioEngineSubject {
public:
    virtual ~AudioEngineSubject() = default;
    virtual AudioEngine &engine() = 0;
    /// Returns once `condition` holds, sounding meanwhile; whether it did in time.
    virtual bool soundUntil(std::function<bool()> condition) = 0;
    /// Takes the source away.
    virtual void removeSource() = 0;
    virtual void bringSourceBack() = 0;
};

/// What every AudioEngine does, whatever is behind it.
class AudioEngineContract : public testing::TestWithParam<std::unique_ptr<AudioEngineSubject> (*)()> {
protected:
    void install(int bufferSize) {
        engine().installTap(bufferSize, [this, bufferSize](const AudioBuffer &buffer) {
            const bool isAsAsked = buffer.frameLength == bufferSize && buffer.format == engine().inputFormat()
                && int(buffer.channels.size()) == buffer.format.channelCount
                && qint64(buffer.channels.front().size()) == bufferSize;
            ++(isAsAsked ? bufferCount : oddBufferCount);
        });
    }

    AudioEngine &engine() { return m_subject->engine(); }
    AudioEngineSubject &subject() { return *m_subject; }

    bool hearsSomethingNew() {
        return m_subject->soundUntil(
            [this, before = bufferCount.load()] { return bufferCount >= before + 3; });
    }

    std::atomic<int> bufferCount = 0;
    std::atomic<int> oddBufferCount = 0;

private:
    std::unique_ptr<AudioEngineSubject> m_subject = GetParam()();
};

TEST_P(AudioEngineContract, IsStoppedAtFirst) {
    EXPECT_FALSE(engine().isRunning());
    EXPECT_GT(engine().inputFormat().sampleRate, 0);
}

TEST_P(AudioEngineContract, DeliversBuffersOfTheSizeAskedFor) {
    install(1024);
    engine().start();
    EXPECT_TRUE(engine().isRunning());
    EXPECT_TRUE(hearsSomethingNew());
    EXPECT_EQ(oddBufferCount, 0);
}

TEST_P(AudioEngineContract, ARemovedTapIsNotCalledAgain) {
    install(1024);
    engine().start();
    EXPECT_TRUE(hearsSomethingNew());
    engine().removeTap();
    const int count = bufferCount;
    engine().stop();
    EXPECT_EQ(bufferCount, count);
}

TEST_P(AudioEngineContract, StopIsHarmlessAtAnyTimeAndAStartFollows) {
    install(1024);
    engine().stop();
    engine().start();
    engine().stop();
    engine().stop();
    EXPECT_FALSE(engine().isRunning());
    engine().start();
    EXPECT_TRUE(engine().isRunning());
    EXPECT_TRUE(hearsSomethingNew());
}

TEST_P(AudioEngineContract, ASourceThatGoesEndsTheRunAndTheNextStartOpensItAgain) {
    install(1024);
    engine().start();
    subject().removeSource();
    EXPECT_TRUE(subject().soundUntil([this] { return !engine().isRunning(); }));
    EXPECT_THROW(engine().start(), SystemError);
    EXPECT_FALSE(engine().isRunning());
    subject().bringSourceBack();
    engine().start();
    EXPECT_TRUE(engine().isRunning());
    EXPECT_TRUE(hearsSomethingNew());
}
