// Pictures as frames of the simulated host, and back.
#pragma once

#include "host_sim/values/frame.h"
#include "tintwell_host/files/picture.h"

namespace program {

// `format` must be of the picture's depth.
host_sim::Frame frameOf(const Picture& picture, PrPixelFormat format);

// Puts the frame's pixels in place of the picture's; the size and depth must be the same.
void takePixels(Picture& picture, const host_sim::Frame& frame);

}  // namespace program
