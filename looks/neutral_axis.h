// What a look makes of greys.
#pragma once

#include <array>
#include <vector>

#include "native/src/lut_engine.h"

namespace looks {

// Red, green, blue; 1 is white, not limited.
using Colour = std::array<float, 3>;

// The look's colours for `count` (2 or more) greys, evenly spread from the first to the last input
// value of the domain, both included. `lut` must be valid with size >= 2. Threads: any.
std::vector<Colour> neutralAxis(const tw::Lut3D& lut, int count);

}  // namespace looks
