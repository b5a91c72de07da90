#include "native/src/rows/row_kernel.h"

#if defined(__aarch64__)
#include <arm_neon.h>

#include <cstring>

#include "native/src/engine/pixel.h"
#include "native/src/rows/two_pass_rows.h"

namespace tw {
namespace {

// Every 64-bit Arm processor has it.
struct Neon {
    static constexpr int kBlocks = 1;
    static constexpr std::uint8_t kNoByte = 0xFF;
    using Floats = float32x4_t;
    using Ints = int32x4_t;
    using Mask = uint32x4_t;
    using FloatOrder = uint8x16_t;

    static Floats set(float value) { return vdupq_n_f32(value); }
    static Ints setInts(std::int32_t value) { return vdupq_n_s32(value); }
    static Floats load(const float* at) { return vld1q_f32(at); }
    static void store(float* at, Floats value) { vst1q_f32(at, value); }
    static void storeInts(std::int32_t* at, Ints value) { vst1q_s32(at, value); }
    static Ints loadBytes(const std::uint8_t* at) { return vreinterpretq_s32_u8(vld1q_u8(at)); }
    static void storeBytes(std::uint8_t* at, Ints value) {
        vst1q_u8(at, vreinterpretq_u8_s32(value));
    }

    static Floats add(Floats a, Floats b) { return vaddq_f32(a, b); }
    static Floats sub(Floats a, Floats b) { return vsubq_f32(a, b); }
    static Floats mul(Floats a, Floats b) { return vmulq_f32(a, b); }
    static Floats div(Floats a, Floats b) { return vdivq_f32(a, b); }
    static Floats mulAdd(Floats a, Floats b, Floats c) { return vfmaq_f32(c, a, b); }
    static Ints addInts(Ints a, Ints b) { return vaddq_s32(a, b); }
    static Ints orBits(Ints a, Ints b) { return vorrq_s32(a, b); }
    static Ints timesTwelve(Ints a) { return vmulq_n_s32(a, 12); }
    static Floats wholePart(Floats t) { return vrndq_f32(t); }
    static Ints toInts(Floats t) { return vcvtq_s32_f32(t); }
    static Floats toFloats(Ints a) { return vcvtq_f32_s32(a); }

    static Floats minOrNaN(Floats a, Floats b) { return vminq_f32(a, b); }
    static Floats maxNonNegative(Floats a, Floats b) { return vmaxq_f32(a, b); }
    static Floats minNonNegative(Floats a, Floats b) { return vminq_f32(a, b); }
    static Mask above(Floats a, Floats b) {
        return vcgtq_s32(vreinterpretq_s32_f32(a), vreinterpretq_s32_f32(b));
    }
    static Floats clampToUnit(Floats u) {
        const Mask notNegative = vcgezq_f32(u);
        const Ints kept = vandq_s32(vreinterpretq_s32_f32(u), vreinterpretq_s32_u32(notNegative));
        return minOrNaN(vreinterpretq_f32_s32(kept), set(1.0f));
    }
    static Floats nextDownWhere(Mask mask, Floats a) {
        return vreinterpretq_f32_u32(vaddq_u32(vreinterpretq_u32_f32(a), mask));
    }
    static Ints selectInts(Mask mask, Ints yes, Ints no) { return vbslq_s32(mask, yes, no); }

    template <int k>
    static Floats spread(Floats plane) {
        return vdupq_laneq_f32(plane, k);
    }
    static Floats rotateDown(Floats a) { return vextq_f32(a, a, 1); }
    static Floats gather(const char* base, const std::int32_t* offsets) {
        return vld1q_f32(reinterpret_cast<const float*>(base + offsets[0]));
    }
    static void loadPlanes(const float* src, Floats (&plane)[4]) {
        const float32x4x4_t planes = vld4q_f32(src);
        for (int channel = 0; channel < 4; ++channel)
            plane[channel] = planes.val[channel];
    }

    static FloatOrder floatOrder(const std::int32_t (&from)[4]) {
        std::uint8_t bytes[16];
        for (int i = 0; i < 16; ++i)
            bytes[i] = static_cast<std::uint8_t>(from[i / 4] * 4 + i % 4);
        return vld1q_u8(bytes);
    }
    static Floats reorder(Floats pixels, FloatOrder order) {
        return vreinterpretq_f32_u8(vqtbl1q_u8(vreinterpretq_u8_f32(pixels), order));
    }
    static Ints elementMask(int element) {
        const std::int32_t elements[] = {0, 1, 2, 3};
        return vreinterpretq_s32_u32(vceqq_s32(vld1q_s32(elements), vdupq_n_s32(element)));
    }
    static Floats selectBits(Ints mask, Floats yes, Floats no) {
        return vbslq_f32(vreinterpretq_u32_s32(mask), yes, no);
    }

    static Ints repeat(const std::uint8_t (&block)[16]) { return loadBytes(block); }
    static Ints shuffleBytes(Ints a, Ints from) {
        return vreinterpretq_s32_u8(
            vqtbl1q_u8(vreinterpretq_u8_s32(a), vreinterpretq_u8_s32(from)));
    }
    static Ints packBytes(Ints q0, Ints q1, Ints q2, Ints q3) {
        const int16x8_t low = vcombine_s16(vqmovn_s32(q0), vqmovn_s32(q1));
        const int16x8_t high = vcombine_s16(vqmovn_s32(q2), vqmovn_s32(q3));
        return vreinterpretq_s32_u8(vcombine_u8(vqmovun_s16(low), vqmovun_s16(high)));
    }
};

}  // namespace

constinit const RowKernels kNeonRows = rowKernelsOf<Neon>("neon");

}  // namespace tw
#endif
