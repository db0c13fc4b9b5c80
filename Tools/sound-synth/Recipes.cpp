#include "Recipes.h"

#include "ExactMath.h"
#include "Loudness.h"

#include <cmath>

namespace {
/// -23 LUFS: quieter than speech, with headroom for the peaks of short sounds.
constexpr double targetMeanSquare = 0.005876;
/// Fraction of the length over which the end fades out.
constexpr double fadePart = 0.15;

/// One partial of an overtone series or a bell.
struct Partial {
    double ratio;
    double amplitude;
    /// Relative to the decay of the note.
    double decay;
};

struct Note {
    double frequency;
    double amplitude;
    Envelope envelope;
};

void addNote(Samples &samples, const Note &note, const std::vector<Partial> &partials) {
    for (const Partial &partial : partials) {
        Envelope envelope = note.envelope;
        envelope.decay *= partial.decay;
        const double frequency = note.frequency * partial.ratio;
        add(samples, Tone { frequency, frequency, 1, note.amplitude * partial.amplitude, envelope, {} });
    }
}

void playFunk(Samples &samples) {
    const std::vector<Partial> pluck { { 1, 1, 1 }, { 2, 0.7, 0.7 }, { 3, 0.5, 0.5 }, { 4, 0.34, 0.36 },
        { 5, 0.24, 0.28 }, { 6, 0.16, 0.22 }, { 7, 0.1, 0.18 } };
    addNote(samples, { 110, 1, { 0, 0.008, 0, 0.16 } }, pluck);
    addNote(samples, { 110, 0.45, { 0.3, 0.008, 0, 0.07 } }, pluck);
    addNote(samples, { 130.8, 0.8, { 0.45, 0.008, 0, 0.18 } }, pluck);
}

void playSubmarine(Samples &samples) {
    const double echoes[][2] { { 0, 1 }, { 0.46, 0.34 }, { 0.92, 0.12 } };
    for (const auto &[start, amplitude] : echoes) {
        add(samples, Tone { 532, 520, 0.5, amplitude, { start, 0.03, 0.04, 0.24 }, {} });
        add(samples, Tone { 266, 260, 0.5, 0.3 * amplitude, { start, 0.05, 0.04, 0.18 }, {} });
    }
}

void playBlow(Samples &samples) {
    add(samples, Breath { 620, 160, 1, { 0, 0.45, 0.05, 0.3 }, {} });
    add(samples, Breath { 1250, 420, 0.4, { 0.05, 0.5, 0, 0.22 }, {} });
}

void playMorse(Samples &samples) {
    const double signs[][2] { { 0, 0.07 }, { 0.17, 0.23 }, { 0.5, 0.07 } };
    for (const auto &[start, length] : signs) {
        add(samples, Tone { 698.5, 698.5, 1, 1, { start, 0.012, length - 0.012, 0.012 }, {} });
        add(samples, Tone { 1397, 1397, 1, 0.08, { start, 0.012, length - 0.012, 0.012 }, {} });
    }
}

void playPop(Samples &samples) {
    add(samples, Tone { 260, 720, 0.09, 1, { 0, 0.006, 0.02, 0.04 }, {} });
    add(samples, Tone { 360, 980, 0.08, 0.55, { 0.32, 0.006, 0.02, 0.035 }, {} });
}

void playBottle(Samples &samples) {
    add(samples, Tone { 188, 185, 0.3, 1, { 0, 0.14, 0.1, 0.26 }, {} });
    add(samples, Tone { 370, 370, 1, 0.07, { 0, 0.12, 0.05, 0.2 }, {} });
    add(samples, Breath { 186, 14, 0.5, { 0, 0.12, 0.1, 0.24 }, {} });
    add(samples, Breath { 2100, 1200, 0.09, { 0, 0.06, 0.08, 0.12 }, {} });
}

void playFrog(Samples &samples) {
    const double croaks[][2] { { 0, 1 }, { 0.3, 0.8 } };
    for (const auto &[start, amplitude] : croaks) {
        const double throat[][2] { { 1, 1 }, { 2, 0.8 }, { 3, 0.55 }, { 4, 0.25 }, { 5, 0.1 } };
        for (const auto &[ratio, share] : throat)
            add(samples,
                Tone { 210 * ratio, 290 * ratio, 0.2, amplitude * share, { start, 0.03, 0.12, 0.025 },
                    { 38, 0.9 } });
    }
}

void playPurr(Samples &samples) {
    for (int harmonic = 2; harmonic <= 6; ++harmonic) {
        const double frequency = 55.0 * harmonic;
        add(samples, Tone { frequency, frequency, 1, 1.0 / harmonic, { 0, 0.4, 0.2, 0.28 }, { 23, 0.75 } });
    }
    add(samples, Breath { 240, 160, 0.35, { 0, 0.4, 0.2, 0.28 }, { 23, 0.85 } });
}

void playSosumi(Samples &samples) {
    const std::vector<Partial> wood { { 1, 1, 1 }, { 3.93, 0.22, 0.4 }, { 9.2, 0.05, 0.2 } };
    addNote(samples, { 392, 1, { 0, 0.005, 0, 0.14 } }, wood);
    addNote(samples, { 587.3, 0.8, { 0.16, 0.005, 0, 0.14 } }, wood);
    addNote(samples, { 440, 0.7, { 0.48, 0.005, 0, 0.16 } }, wood);
}

void playTink(Samples &samples) {
    const std::vector<Partial> metal { { 1, 1, 1 }, { 1.52, 0.5, 0.7 }, { 2.63, 0.18, 0.4 } };
    addNote(samples, { 2093, 1, { 0, 0.004, 0, 0.09 } }, metal);
    addNote(samples, { 2349, 0.5, { 0.18, 0.004, 0, 0.07 } }, metal);
}

void playHero(Samples &samples) {
    const std::vector<Partial> horn { { 1, 1, 1 }, { 2, 0.34, 0.8 }, { 3, 0.16, 0.6 }, { 4, 0.06, 0.5 } };
    const double chord[] { 261.6, 329.6, 392, 523.3 };
    for (int voice = 0; voice < 4; ++voice)
        addNote(samples, { chord[voice], 1 - 0.12 * voice, { 0.13 * voice, 0.07, 0.08, 0.34 } }, horn);
}

void playGlass(Samples &samples) {
    const std::vector<Partial> bowl { { 1, 0.6, 1 }, { 1.0022, 0.5, 1 }, { 2.31, 0.3, 0.6 },
        { 2.315, 0.25, 0.6 }, { 4.19, 0.1, 0.35 } };
    addNote(samples, { 987.8, 1, { 0, 0.012, 0, 0.36 } }, bowl);
}

void playBasso(Samples &samples) {
    const std::vector<Partial> string { { 1, 1, 1 }, { 2, 0.5, 0.9 }, { 3, 0.2, 0.7 }, { 4, 0.08, 0.5 } };
    addNote(samples, { 87.3, 1, { 0, 0.05, 0.05, 0.32 } }, string);
    addNote(samples, { 65.4, 0.6, { 0.3, 0.08, 0.05, 0.3 } }, string);
}

void playPing(Samples &samples) {
    add(samples, Tone { 1318.5, 1318.5, 1, 1, { 0, 0.006, 0, 0.2 }, {} });
    add(samples, Tone { 2640, 2640, 1, 0.1, { 0, 0.006, 0, 0.1 }, {} });
}

void fadeOut(Samples &samples) {
    const auto length = static_cast<size_t>(static_cast<double>(samples.size()) * fadePart);
    for (size_t left = 0; left < length; ++left)
        samples[samples.size() - 1 - left]
            *= ExactMath::raisedCosine(0.5 * static_cast<double>(left) / static_cast<double>(length));
}
} // namespace

const std::vector<Recipe> &recipes() {
    static const std::vector<Recipe> all {
        { "Funk", 1.2, playFunk },
        { "Submarine", 1.9, playSubmarine },
        { "Blow", 1.6, playBlow },
        { "Morse", 1.2, playMorse },
        { "Pop", 0.8, playPop },
        { "Bottle", 1.4, playBottle },
        { "Frog", 1.1, playFrog },
        { "Purr", 1.6, playPurr },
        { "Sosumi", 1.2, playSosumi },
        { "Tink", 0.8, playTink },
        { "Hero", 1.9, playHero },
        { "Glass", 1.7, playGlass },
        { "Basso", 1.6, playBasso },
        { "Ping", 1.2, playPing },
    };
    return all;
}

Samples render(const Recipe &recipe) {
    Samples samples(static_cast<size_t>(recipe.length * sampleRate + 0.5));
    recipe.play(samples);
    fadeOut(samples);
    const double gain = std::sqrt(targetMeanSquare / weightedMeanSquare(samples));
    for (double &sample : samples)
        sample *= gain;
    return samples;
}
