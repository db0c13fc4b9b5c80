#pragma once

#include <QtGlobal>

#include <vector>

/// How samples are laid out: 32-bit floats from -1 to 1, one plane for each channel.
struct AudioFormat {
    /// Frames per second.
    double sampleRate = 48000;
    int channelCount = 1;

    friend bool operator==(const AudioFormat &, const AudioFormat &) = default;
};

/// A block of audio samples. Copies are independent.
struct AudioBuffer {
    AudioFormat format;
    /// One vector per channel, each of `frameLength` samples; empty if the source delivers no float samples.
    std::vector<std::vector<float>> channels;
    qint64 frameLength = 0;
};
