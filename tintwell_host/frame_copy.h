// Pictures as frames of the simulated host, and back.
#pragma once

#include "host_sim/values/frame.h"
#include "tintwell_host/picture.h"

namespace program {

// `format` must be of the picture's depth.
host_sim::Frame frameOf(const Picture& picture, PrPixelFormat format);

// The frame's pixels with the metadata of `like`, the picture that it came from.
Picture pictureOf(const host_sim::Frame& frame, const Picture& like);

}  // namespace program
