// The kernels that grade one row of pixels is graded. row_kernels.h chooses among them.
#pragma once

#include <cstdint>

#include "native/src/engine/pixel.h"

namespace tw {

// Each grades `width` pixels from src to dst, whose channels stand as `from` and `to` say; src and
// dst are the same pixels or do not overlap. The scalar kernel is the definition: every other
// kernel gives the same bits, except that where the result is not a number it may be another such
// value. Threads: any; none throws. All but the scalar kernel need a processor with the features
// they are named for.
using RowKernel8 = void(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from,
                        std::uint8_t* dst, const ChannelMap& to, int width, float amount);
using RowKernelF = void(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
                        const ChannelMap& to, int width, float amount);

RowKernel8 applyRow8Scalar;
RowKernelF applyRowFScalar;

// The stream kernels write around the caches, and are for pictures too large for these; what they
// wrote is visible to whoever is told of it after they return.
#if defined(__x86_64__)
RowKernel8 applyRow8Sse41, applyRow8Avx2, applyRow8Avx512;
RowKernelF applyRowFSse41, applyRowFAvx2, applyRowFAvx512;
RowKernelF streamRowFSse41, streamRowFAvx2, streamRowFAvx512;
#elif defined(__aarch64__)
RowKernel8 applyRow8Neon;
RowKernelF applyRowFNeon;
#endif

}  // namespace tw
