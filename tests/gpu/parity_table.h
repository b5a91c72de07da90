// What the kernel is compared with the CPU on: LUTs, colours and shapes of frames.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/gpu/parity.h"
#include "tests/gpu/rounding.h"

namespace twtest {

// One way to render: from `source`, at an amount, into itself or into another buffer of `shape`.
struct ParityFrame {
    Picture source;
    float amount;
    Place place;
    Shape shape;
};

// Both are made when they are asked for, and are the same each time.
struct ParityRow {
    std::string name;
    int points = 0;  // of the LUT, an axis
    std::function<tw::Lut3D()> lut;
    std::function<std::vector<ParityFrame>(const tw::Lut3D&)> frames;
};

std::vector<ParityRow> parityTable();

// Colours in 32-bit and half floats, in place and to a buffer with other rows, at three amounts.
std::vector<ParityFrame> framesOf(const std::vector<Colour>& colours);

std::string describe(const ParityFrame& frame);

// What a device may differ by that counts single-precision subnormals as zeros, as long as no
// sample is infinite (subnormals_test.cpp). The largest sample's share: a weight may be off by
// 2^-126 times the cells of an axis, 128 at most, and an amount blends it. The rest: colours and
// results. Where a fused sum may meet a subnormal sample, a unit in the last place is added, of a
// sum below 2, at an amount below 2.
double subnormalBound(const tw::Lut3D& lut, Rounding rounding);

// The calibration pattern's sizes, and the frames it is drawn on.
std::vector<int> patternSizes();
std::vector<Shape> patternShapes();

}  // namespace twtest
