// The pictures on a sheet. All are floats without alpha's meaning, as readPicture gives them.
#pragma once

#include <cstddef>

#include "native/src/lut_engine.h"
#include "tintwell_host/files/picture.h"

namespace program {

// The middle of a picture at this size: scaled to fill it, with what stands over cut off.
Picture fitted(const Picture& picture, int width, int height);

// By the engine's own sampler and blend; amount 1 is the look fully.
Picture graded(const Picture& picture, const tw::Lut3D& lut, float amount);

// Where a grade clips: `picture` in grey, with the pixels marked in which a channel reaches or
// leaves the ends of the range that were within it before.
struct ClipMap {
    Picture picture;
    double low = 0.0;  // share of the pixels, 0..1
    double high = 0.0;
};
ClipMap clipMapOf(const Picture& before, const Picture& after);

inline constexpr unsigned kLowPaint = 0x56B4E9;
inline constexpr unsigned kHighPaint = 0xFF9D00;

}  // namespace program
