#pragma once

#include <QtGlobal>

#include <vector>

/// How samples are laid out: 32-bit floats from -1 to 1, one plane for each channel.
struct AudioFormat {
    /// Frames a second.
    double sampleRate = 48000;
    int channelCount = 1;

    friend bool operator==(const AudioFormat &, const AudioFormat &) = default;
};

/// A piece of sound. Copies are independent.
struct AudioBuffer {
    AudioFormat format;
    /// One vector for each channel, all of `frameLength` samples; empty when the source delivers no float
    /// samples.
    std::vector<std::vector<float>> channels;
    qint64 frameLength = 0;
};
