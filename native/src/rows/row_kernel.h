// The kernels that grade one row of pixels, a file for each instruction set. row_kernels.h chooses
// among them.
#pragma once

#include <cstdint>

#include "native/src/engine/pixel.h"

namespace tw {

// Each grades `width` pixels from src to dst, whose channels stand as `from` and `to` say; src and
// dst are the same pixels or do not overlap. The scalar kernels are the definition: every other
// kernel gives the same bits, except that a NaN may be another NaN. Threads: any; none throws. All
// but the scalar kernels need a processor with the features they are named for.
using RowKernel8 = void(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from,
                        std::uint8_t* dst, const ChannelMap& to, int width, float amount);
using RowKernelF = void(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
                        const ChannelMap& to, int width, float amount);

struct RowKernels {
    const char* name;  // "scalar", "sse4.1", "avx2", "avx512", "neon"
    RowKernel8* row8;
    RowKernelF* rowF;
    // rowF for pictures that no cache holds: writes around the caches. What it wrote is visible to
    // other threads that are told of it after it returns. rowF itself in all kernels but AVX-512's:
    // on a processor without AVX-512 such stores were slower.
    RowKernelF* streamF;
};

extern const RowKernels kScalarRows;
#if defined(__x86_64__)
extern const RowKernels kSse41Rows, kAvx2Rows, kAvx512Rows;
#elif defined(__wasm_simd128__)
extern const RowKernels kSse41Rows;
#elif defined(__aarch64__)
extern const RowKernels kNeonRows;
#endif

}  // namespace tw
