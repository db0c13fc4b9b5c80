#pragma once

#include "Instrument.h"

/// The mean square of a sound that loops for ever, weighted as the ear hears it (K-weighting of ITU-R BS.1770
/// for 48 kHz). A full-scale sine of 1 kHz has about 0.59.
double weightedMeanSquare(const Samples &samples);

/// The loudness of a looping sound in LUFS.
double loudness(const Samples &samples);
