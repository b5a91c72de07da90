// The forms in which one row of pixels is graded.
#pragma once

#include <cstdint>

#include "native/src/pixel.h"

namespace tw {

// Grades `width` pixels from src to dst, whose channels stand as `from` and `to` say; src and dst
// may be the same memory. The scalar form is the definition: any other form must give the same
// bits. Threads: any; never throws.
void applyRow8Scalar(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from,
                     std::uint8_t* dst, const ChannelMap& to, int width, float amount);
void applyRowFScalar(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
                     const ChannelMap& to, int width, float amount);

}  // namespace tw
