#pragma once

#include "Instrument.h"

#include <string>

/// The bytes of a WAV file of 16-bit integers; samples beyond full scale are clipped.
std::string waveFile(const Samples &samples);
