// How far colours are from one another.
#pragma once

#include <vector>

#include "looks/comparison.h"

namespace program {

// Of two lists of colours; CIEDE2000 counts just visible differences.
struct Difference {
    looks::Steps steps;
    double largestDelta = 0.0;
    double meanDelta = 0.0;
    std::vector<float> deltas;  // CIEDE2000 of each colour
};

// `one` and `other`: as many colours, red, green, blue each, taken for sRGB; for CIEDE2000 limited
// to 0..1, as a screen shows them.
Difference differenceOf(const std::vector<float>& one, const std::vector<float>& other);

}  // namespace program
