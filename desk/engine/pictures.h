// Pictures: graded, drawn and measured.
#pragma once

#include <memory>
#include <string>

#include "desk/engine/bytes.h"
#include "desk/engine/look.h"
#include "looks/measure.h"

namespace desk {

// All pictures: red, green, blue, alpha for each pixel, rows top down without padding.

// What the effect makes of a frame, in place: graded by `amount` (0 to 100), the calibration
// pattern, or the frame as it was. Throw Refusal when the memory is not width x height pixels.
void render8(Bytes& pixels, int width, int height, const Look& look, double amount);
void renderF(Floats& pixels, int width, int height, const Look& look, double amount);

// The calibration pattern of 2..64 steps per channel in 8 bits.
std::unique_ptr<Bytes> pattern(int steps, int width, int height);

// The computed picture, in 8 bits.
std::unique_ptr<Bytes> scene(int width, int height);

// See looks::measurePattern. Throws Refusal.
looks::Measurement measure(const Floats& pixels, int width, int height,
                           const looks::PatternFrame& frame);

}  // namespace desk
