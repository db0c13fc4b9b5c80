#pragma once

#include <vector>

/// Frames a second of everything that is made here.
constexpr int sampleRate = 48000;

/// Mono sound; 1 is full scale.
using Samples = std::vector<double>;

/// How something swells and fades, in seconds.
struct Envelope {
    double start = 0;
    /// From silence to full.
    double attack = 0.01;
    /// Full for so long.
    double hold = 0;
    /// Until it has fallen to 1/e.
    double decay = 0.2;
};

/// Loudness that goes up and down while a sound lasts.
struct Tremolo {
    /// Times a second.
    double rate = 0;
    /// 0 is none, 1 goes down to silence.
    double depth = 0;
};

/// A sine that may slide.
struct Tone {
    /// Hertz at the start and at the end of the slide.
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

/// Adds to `samples`, as far as they reach.
void add(Samples &samples, const Tone &tone);
void add(Samples &samples, const Breath &breath);
