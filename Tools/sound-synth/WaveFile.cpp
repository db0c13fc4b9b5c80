#include "WaveFile.h"

#include <algorithm>
#include <cmath>

namespace {
void append(std::string &bytes, uint32_t number, int size) {
    for (int byte = 0; byte < size; ++byte)
        bytes += static_cast<char>(number >> (8 * byte) & 0xff);
}
} // namespace

std::string waveFile(const Samples &samples) {
    constexpr int sampleSize = 2;
    const auto dataSize = static_cast<uint32_t>(samples.size() * sampleSize);
    std::string bytes = "RIFF";
    append(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4);
    append(bytes, 1, 2); // integers
    append(bytes, 1, 2); // channels
    append(bytes, sampleRate, 4);
    append(bytes, sampleRate * sampleSize, 4);
    append(bytes, sampleSize, 2);
    append(bytes, 8 * sampleSize, 2);
    bytes += "data";
    append(bytes, dataSize, 4);
    for (const double sample : samples) {
        const double scaled = std::floor(std::clamp(sample, -1.0, 1.0) * 32767 + 0.5);
        append(bytes, static_cast<uint16_t>(static_cast<int16_t>(scaled)), sampleSize);
    }
    return bytes;
}
