#pragma once

#include "Instrument.h"

/// The K-weighted mean square (ITU-R BS.1770, 48 kHz) of an endlessly looping sound. A full-scale 1 kHz sine
/// has about 0.59.
double weightedMeanSquare(const Samples &samples);

/// The loudness of a looping sound in LUFS.
double loudness(const Samples &samples);
