// Writes whisper.cpp's spectrum of samples: number of frames, number of bands, and the values, band by band,
// as 32-bit numbers.

#include "whisper.cpp"

#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace {

std::vector<float> samplesIn(const char *path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes { std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>() };
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
    return samples;
}

void writeSpectrum(const whisper_mel &mel, const char *path) {
    std::ofstream file(path, std::ios::binary);
    const std::int32_t head[] = { mel.n_len, mel.n_mel };
    file.write(reinterpret_cast<const char *>(head), sizeof head);
    file.write(reinterpret_cast<const char *>(mel.data.data()), mel.data.size() * sizeof(float));
}

} // namespace

int main(int count, char **arguments) {
    if (count != 4) {
        std::cerr << "usage: front-end MODEL SAMPLES SPECTRUM\n";
        return 2;
    }
    whisper_context_params parameters = whisper_context_default_params();
    parameters.use_gpu = false;
    whisper_context *context = whisper_init_from_file_with_params(arguments[1], parameters);
    if (context == nullptr)
        return 1;
    const std::vector<float> samples = samplesIn(arguments[2]);
    if (whisper_pcm_to_mel(context, samples.data(), static_cast<int>(samples.size()), 1) != 0)
        return 1;
    writeSpectrum(context->state->mel, arguments[3]);
    whisper_free(context);
    return 0;
}
