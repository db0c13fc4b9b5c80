#pragma once

#include "Instrument.h"

#include <string>
#include <vector>

/// One sound of the program.
struct Recipe {
    /// The file's name without ".wav".
    std::string name;
    /// Length of the loop in seconds.
    double length;
    void (*play)(Samples &samples);
};

/// All sounds.
const std::vector<Recipe> &recipes();

/// Generates the sound, faded out at its end so that it loops without a click, and normalised in loudness.
Samples render(const Recipe &recipe);
