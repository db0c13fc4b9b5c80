#pragma once

#include "Instrument.h"

#include <string>

/// The content of a 16-bit integer WAV file; samples beyond full scale are clipped.
std::string waveFile(const Samples &samples);
