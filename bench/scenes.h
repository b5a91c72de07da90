// What the benchmarks work on. Everything is made from fixed seeds: two runs, on two machines or
// with two compilers, measure the same pictures and the same LUTs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"

namespace bench {

// How the colours of a picture are spread.
enum class Colours {
    kWaves,   // one slow sine wave a channel and 3 % noise: neighbours nearly alike, as in footage
    kRandom,  // every pixel uniform in 0..1: the worst case for caches and branches
};

// A LUT of `size` points per axis with uniform random values in 0..1.
tw::Lut3D randomLut(std::int32_t size);

// The text of a .cube file of that LUT, six decimals a number as most programs write them.
std::string cubeText(const tw::Lut3D& lut);

// A picture and the memory it lies in, 64-byte aligned, without padding between rows.
class FrameF {
public:
    FrameF(int width, int height);  // all zero
    FrameF(int width, int height, Colours colours);
    tw::ImageF image;
    std::size_t bytes() const { return memory_.size() * sizeof(float) - 64; }

private:
    std::vector<float> memory_;
};

class Frame8 {
public:
    Frame8(int width, int height);
    Frame8(int width, int height, Colours colours);
    tw::Image8 image;
    std::size_t bytes() const { return memory_.size() - 64; }

private:
    std::vector<std::uint8_t> memory_;
};

}  // namespace bench
