// What a look does, in numbers.
#pragma once

#include <array>
#include <cstddef>

#include "looks/neutral_axis.h"
#include "native/src/lut_engine.h"

namespace looks {

// Of one channel, while grey rises from 0 to 1 in the 255 steps of 8 bits.
struct ChannelFacts {
    // The longest way down: how far the output falls below the highest one before it, and the grey
    // at which it is lowest. 0 when it only rises.
    float fall = 0.0f;
    float fallAt = 0.0f;
    // All greys up to the first one, and from the second one on, give one output each.
    float flatUpTo = 0.0f;
    float flatFrom = 1.0f;
};

// A sample is one channel of one lattice point. Inputs and outputs: 1 is white.
struct Facts {
    std::size_t points = 0;      // size^3
    std::size_t notNumbers = 0;  // samples that are NaN or infinite; those below are of the others
    float lowest = 0.0f;         // sample
    float highest = 0.0f;
    std::size_t below = 0;  // lattice points with a sample below 0
    std::size_t above = 0;  // lattice points with a sample above 1
    // Points whose colour is that of another point as well.
    std::size_t duplicates = 0;
    // Largest change of a sample against the colour that comes in.
    float largestChange = 0.0f;
    Colour black{};  // what 0 0 0 and 1 1 1 become
    Colour white{};
    // Largest difference between two channels of one grey, and that grey.
    float cast = 0.0f;
    float castAt = 0.0f;
    std::array<ChannelFacts, 3> channels;
};

// `lut` must be valid with size >= 2 and the domain 0..1. Threads: any. Throws what vectors throw.
Facts factsOf(const tw::Lut3D& lut);

// What became of the samples of one LUT in another one of its size, in units of 1/255; those that
// are not finite are left out.
struct Precision {
    float largest = 0.0f;
    float mean = 0.0f;
};
Precision precisionOf(const tw::Lut3D& before, const tw::Lut3D& after);

}  // namespace looks
