#include "Platform/Linux/Pulse/AudioBlocks.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {
struct Received {
    std::vector<std::vector<float>> channels;
    int bufferCount = 0;

    AudioBlocks::Sink sink() {
        return [this](const AudioBuffer &buffer) {
            ++bufferCount;
            channels.resize(buffer.channels.size());
            for (size_t channel = 0; channel < channels.size(); ++channel)
                channels[channel].insert(channels[channel].end(), buffer.channels[channel].begin(),
                    buffer.channels[channel].end());
        };
    }
};

std::vector<float> counting(int first, size_t count) {
    std::vector<float> samples(count);
    std::iota(samples.begin(), samples.end(), float(first));
    return samples;
}
} // namespace

TEST(AudioBlocks, SplitsAnyPiecesIntoEqualBuffers) {
    for (const size_t piece : { 1U, 3U, 4U, 5U, 8U, 9U, 100U }) {
        AudioBlocks blocks({ 48000, 1 });
        Received received;
        blocks.deliverTo(4, received.sink());
        for (int start = 0; start < 100; start += int(piece)) {
            const auto samples = counting(start, std::min(piece, size_t(100 - start)));
            blocks.append(samples.data(), qint64(samples.size()));
        }
        EXPECT_EQ(received.bufferCount, 25);
        ASSERT_EQ(received.channels.size(), 1U);
        EXPECT_EQ(received.channels[0], counting(0, 100)) << piece;
    }
}

TEST(AudioBlocks, HoldsAnIncompleteBufferBack) {
    AudioBlocks blocks({ 48000, 1 });
    Received received;
    blocks.deliverTo(4, received.sink());
    const auto samples = counting(0, 7);
    blocks.append(samples.data(), 7);
    EXPECT_EQ(received.channels, (std::vector<std::vector<float>> { { 0, 1, 2, 3 } }));
    blocks.clear();
    blocks.append(samples.data(), 4);
    EXPECT_EQ(received.channels, (std::vector<std::vector<float>> { { 0, 1, 2, 3, 0, 1, 2, 3 } }));
}

TEST(AudioBlocks, NullIsSilence) {
    AudioBlocks blocks({ 48000, 1 });
    Received received;
    blocks.deliverTo(4, received.sink());
    const float samples[] = { 1, 2 };
    blocks.append(samples, 2);
    blocks.append(nullptr, 5);
    blocks.append(samples, 1);
    EXPECT_EQ(received.channels, (std::vector<std::vector<float>> { { 1, 2, 0, 0, 0, 0, 0, 1 } }));
}

TEST(AudioBlocks, DeinterleavesChannels) {
    AudioBlocks blocks({ 48000, 2 });
    Received received;
    blocks.deliverTo(2, received.sink());
    const float samples[] = { 1, -1, 2, -2, 3, -3, 4, -4 };
    blocks.append(samples, 1);
    blocks.append(samples + 2, 3);
    EXPECT_EQ(received.channels, (std::vector<std::vector<float>> { { 1, 2, 3, 4 }, { -1, -2, -3, -4 } }));
}

TEST(AudioBlocks, WithoutASinkFramesAreDropped) {
    AudioBlocks blocks({ 48000, 1 });
    blocks.append(nullptr, 10);
    Received received;
    blocks.deliverTo(4, received.sink());
    blocks.append(nullptr, 4);
    EXPECT_EQ(received.bufferCount, 1);
    blocks.deliverTo(0, nullptr);
    blocks.append(nullptr, 4);
    EXPECT_EQ(received.bufferCount, 1);
}
