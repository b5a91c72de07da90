// How far two looks are from one another, in numbers.
#pragma once

#include <vector>

#include "native/src/lut_engine.h"

namespace looks {

// As many colours an axis are compared, whatever the sizes of the looks.
inline constexpr int kComparedPoints = 33;

// What a look makes of kComparedPoints^3 evenly spread colours: red, green, blue each, red fastest,
// then green, then blue. `lut` must be valid with size >= 2. Threads: any. Throws what vectors
// throw.
std::vector<float> comparedColours(const tw::Lut3D& lut);

// Between two lists of as many values, in steps of 8 bits.
struct Steps {
    double largest = 0.0;
    double mean = 0.0;
};
Steps stepsBetween(const std::vector<float>& one, const std::vector<float>& other);

}  // namespace looks
