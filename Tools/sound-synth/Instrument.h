#pragma once

#include <vector>

/// Frames per second of all generated sounds.
constexpr int sampleRate = 48000;

/// Mono sound; 1 is full scale.
using Samples = std::vector<double>;

/// Attack, hold and decay in seconds.
struct Envelope {
    double start = 0;
    /// Time from silence to full volume.
    double attack = 0.01;
    /// Time at full volume.
    double hold = 0;
    /// Time until the volume has decayed to 1/e.
    double decay = 0.2;
};

/// Periodic volume modulation.
struct Tremolo {
    /// Hertz.
    double rate = 0;
    /// From 0 (none) to 1 (down to silence).
    double depth = 0;
};

/// A sine with an optional glide.
struct Tone {
    /// Hertz at the start and end of the glide.
    double frequency = 440;
    double endFrequency = 440;
    /// Seconds.
    double slide = 1;
    double amplitude = 1;
    Envelope envelope;
    Tremolo tremolo;
};

/// Noise around one frequency.
struct Breath {
    /// Hertz.
    double frequency = 440;
    double bandwidth = 100;
    double amplitude = 1;
    Envelope envelope;
    Tremolo tremolo;
};

/// Adds a sound to `samples`, cut off at their end.
void add(Samples &samples, const Tone &tone);
void add(Samples &samples, const Breath &breath);
