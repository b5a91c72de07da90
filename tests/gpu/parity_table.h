// What the kernel is compared with the CPU on: LUTs, colours and shapes of frames.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/gpu/parity.h"

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

// The calibration pattern's sizes, and the frames it is drawn on.
std::vector<int> patternSizes();
std::vector<Shape> patternShapes();

}  // namespace twtest
