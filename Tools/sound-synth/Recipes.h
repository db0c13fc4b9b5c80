#pragma once

#include "Instrument.h"

#include <string>
#include <vector>

/// One sound of the program.
struct Recipe {
    /// The file's name without ".wav".
    std::string name;
    /// Seconds of one round of the loop.
    double length;
    void (*play)(Samples &samples);
};

/// All sounds.
const std::vector<Recipe> &recipes();

/// The finished sound: faded out towards its end, so that it loops without a click, and as loud as all
/// others.
Samples cook(const Recipe &recipe);
