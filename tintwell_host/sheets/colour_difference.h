// How far colours are from one another.
#pragma once

#include <vector>

namespace program {

// Of two lists of colours; steps are those of 8 bits, CIEDE2000 counts just visible differences.
struct Difference {
    double largestSteps = 0.0;  // of any channel
    double meanSteps = 0.0;     // of all channels
    double largestDelta = 0.0;
    double meanDelta = 0.0;
    std::vector<float> deltas;  // CIEDE2000 of each colour
};

// `one` and `other`: as many colours, red, green, blue each, taken for sRGB; for CIEDE2000 limited
// to 0..1, as a screen shows them.
Difference differenceOf(const std::vector<float>& one, const std::vector<float>& other);

}  // namespace program
