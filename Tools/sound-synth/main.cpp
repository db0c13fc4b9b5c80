#include "Loudness.h"
#include "Recipes.h"
#include "WaveFile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>

namespace {
bool write(const std::string &path, const std::string &bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    return static_cast<bool>(file);
}

double peak(const Samples &samples) {
    double highest = 0;
    for (const double sample : samples)
        highest = std::max(highest, std::abs(sample));
    return highest;
}
} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(
            stderr, "Usage: tolmi-sound-synth FOLDER\n\nWrites every sound as a WAV file into FOLDER.\n");
        return 2;
    }
    for (const Recipe &recipe : recipes()) {
        const Samples samples = render(recipe);
        const std::string path = argv[1] + ("/" + recipe.name + ".wav");
        if (!write(path, waveFile(samples))) {
            std::fprintf(stderr, "tolmi-sound-synth: cannot write %s\n", path.c_str());
            return 1;
        }
        std::printf("%-10s %.1f s  %6.2f LUFS  peak %6.2f dB\n", recipe.name.c_str(), recipe.length,
            loudness(samples), 20 * std::log10(peak(samples)));
    }
    return 0;
}
