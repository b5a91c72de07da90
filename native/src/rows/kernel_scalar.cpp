#include <cstring>

#include "native/src/rows/row_kernel.h"

namespace tw {
namespace {

// in + (lut(in) - in) * amount for one colour.
void grade(const Lut3D& lut, const float (&in)[3], float amount, float (&out)[3]) {
    float mapped[3];
    sampleTetra(lut, in, mapped);
    for (int k = 0; k < 3; ++k)
        out[k] = mulAdd(mapped[k] - in[k], amount, in[k]);
}

void gradeRow8(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from, std::uint8_t* dst,
               const ChannelMap& to, int width, float amount) {
    for (int x = 0; x < width; ++x, src += 4, dst += 4) {
        const float in[3] = {static_cast<float>(src[from.r]) * kByteToFloat,
                             static_cast<float>(src[from.g]) * kByteToFloat,
                             static_cast<float>(src[from.b]) * kByteToFloat};
        const std::uint8_t alpha = src[from.a];
        float out[3];
        grade(lut, in, amount, out);
        dst[to.r] = quantise8(out[0]);
        dst[to.g] = quantise8(out[1]);
        dst[to.b] = quantise8(out[2]);
        dst[to.a] = alpha;
    }
}

void gradeRowF(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
               const ChannelMap& to, int width, float amount) {
    for (int x = 0; x < width; ++x, src += 4, dst += 4) {
        const float in[3] = {src[from.r], src[from.g], src[from.b]};
        // Alpha is copied as bits, so that a signalling NaN stays one.
        std::uint32_t alpha;
        std::memcpy(&alpha, src + from.a, sizeof alpha);
        float out[3];
        grade(lut, in, amount, out);
        dst[to.r] = out[0];
        dst[to.g] = out[1];
        dst[to.b] = out[2];
        std::memcpy(dst + to.a, &alpha, sizeof alpha);
    }
}

}  // namespace

constinit const RowKernels kScalarRows{"scalar", gradeRow8, gradeRowF, gradeRowF};

}  // namespace tw
