#include "Instrument.h"

#include "ExactMath.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {
double strength(const Envelope &envelope, double time) {
    if (time < envelope.attack)
        return ExactMath::raisedCosine(0.5 * time / envelope.attack);
    const double fading = time - envelope.attack - envelope.hold;
    return fading <= 0 ? 1 : ExactMath::exponential(std::max(-fading / envelope.decay, -64.0));
}

double strength(const Tremolo &tremolo, double time) {
    return 1 - tremolo.depth * ExactMath::raisedCosine(tremolo.rate * time);
}

/// Adds `sampleAt(time)`, shaped by the envelope, from its start.
template <typename Sound, typename SampleAt>
void addShaped(Samples &samples, const Sound &sound, SampleAt sampleAt) {
    const auto first = static_cast<size_t>(sound.envelope.start * sampleRate);
    for (size_t index = first; index < samples.size(); ++index) {
        const double time = static_cast<double>(index - first) / sampleRate;
        samples[index] += sound.amplitude * strength(sound.envelope, time) * strength(sound.tremolo, time)
            * sampleAt(time);
    }
}

/// Deterministic white noise from -1 to 1.
class Noise {
public:
    double next() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return m_state / 2147483648.0 - 1;
    }

private:
    uint32_t m_state = 0x2545f491;
};

/// A band-pass filter whose gain preserves the power of white noise.
class Resonator {
public:
    Resonator(double frequency, double bandwidth)
        : m_radius(ExactMath::exponential(-3.14159265358979323846 * bandwidth / sampleRate))
        , m_feedback(2 * m_radius * ExactMath::sine(frequency / sampleRate + 0.25))
        , m_gain(std::sqrt(1 - m_radius * m_radius)) { }

    double pass(double input) {
        const double output
            = m_gain * (input - m_beforeInput) + m_feedback * m_last - m_radius * m_radius * m_before;
        m_beforeInput = std::exchange(m_lastInput, input);
        m_before = std::exchange(m_last, output);
        return output;
    }

private:
    const double m_radius;
    const double m_feedback;
    const double m_gain;
    double m_last = 0;
    double m_before = 0;
    double m_lastInput = 0;
    double m_beforeInput = 0;
};
} // namespace

void add(Samples &samples, const Tone &tone) {
    double turns = 0;
    addShaped(samples, tone, [&](double time) {
        const double progress = std::min(time / tone.slide, 1.0);
        const double sample = ExactMath::sine(turns);
        turns += (tone.frequency + progress * (tone.endFrequency - tone.frequency)) / sampleRate;
        return sample;
    });
}

void add(Samples &samples, const Breath &breath) {
    Noise noise;
    Resonator resonator(breath.frequency, breath.bandwidth);
    addShaped(samples, breath, [&](double) { return resonator.pass(noise.next()); });
}
