// The forms in which one row of pixels is graded. row_forms.h chooses among them.
#pragma once

#include <cstdint>

#include "native/src/pixel.h"

namespace tw {

// Each grades `width` pixels from src to dst, whose channels stand as `from` and `to` say; src and
// dst are the same pixels or do not overlap. The scalar form is the definition: every other form
// gives the same bits, except that where the result is not a number it may be another such value.
// Threads: any; none throws. All but the scalar form need a processor with the features they are
// named for.
using RowForm8 = void(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from,
                      std::uint8_t* dst, const ChannelMap& to, int width, float amount);
using RowFormF = void(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
                      const ChannelMap& to, int width, float amount);

RowForm8 applyRow8Scalar;
RowFormF applyRowFScalar;

// The stream forms write around the caches, and are for pictures too large for these; what they
// wrote is visible to whoever is told of it after they return.
#if defined(__x86_64__)
RowForm8 applyRow8Sse41, applyRow8Avx2, applyRow8Avx512;
RowFormF applyRowFSse41, applyRowFAvx2, applyRowFAvx512;
RowFormF streamRowFSse41, streamRowFAvx2, streamRowFAvx512;
#elif defined(__aarch64__)
RowForm8 applyRow8Neon;
RowFormF applyRowFNeon;
#endif

}  // namespace tw
