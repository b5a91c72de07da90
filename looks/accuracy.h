// How exact a measured look is.
#pragma once

#include <array>
#include <cstddef>

#include "looks/measure.h"

namespace looks {

// From the noise of a measurement, in steps of 8 bits.
struct Accuracy {
    double middleNoise = 0.0;  // of the middle patch
    double mostNoise = 0.0;
    std::size_t noisiest = 0;  // lattice point
    // How far the look's points are off.
    double middleError = 0.0;
    double mostError = 0.0;

    // Whether less compression, a larger frame or fewer steps would help.
    bool isPoor() const { return middleError > 1.0; }
};

// `isOf8Bits`: the picture's values were whole steps. `measurement` has at least one point.
// Threads: any. Throws what vectors throw.
Accuracy accuracyOf(const Measurement& measurement, bool isOf8Bits);

// The colour (red, green, blue, 0..1) that a pattern of `size` steps shows at a lattice point.
std::array<double, 3> patternColour(std::size_t point, int size);

}  // namespace looks
